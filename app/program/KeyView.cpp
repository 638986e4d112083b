#include "app/program/KeyView.h"

#include "platform/windows/KeyCodes.h"

#include <QKeyEvent>
#include <QQuickWindow>

namespace tarnwick {

KeyView::KeyView(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemIsFocusScope, false); }

KeyView::~KeyView() { disconnect(m_following); } // the focus moves while it goes

bool KeyView::hasKeys() const {
    if (!window() || !window()->activeFocusItem())
        return true;
    return window()->activeFocusItem() == this || isAncestorOf(window()->activeFocusItem());
}

void KeyView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        event->ignore(); // it moves the focus
        return;
    }
    if (event->key() == Qt::Key_F1 || event->key() == Qt::Key_Question)
        Q_EMIT helpWanted();
    Q_EMIT pressed(event->keyCombination());
    if (const auto code = windows::hardwareKeyCode(event->key()))
        Q_EMIT keyDown(*code);
    event->accept();
}

void KeyView::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange) {
        disconnect(m_following);
        if (data.window) {
            setFocus(true);
            m_following =
                connect(data.window, &QQuickWindow::activeFocusItemChanged, this, &KeyView::takeBack);
        }
    }
    QQuickItem::itemChange(change, data);
}

/// What goes while it has the focus leaves it with the window's own item, from where no key gets here.
void KeyView::takeBack() {
    if (window() && window()->activeFocusItem() == window()->contentItem())
        forceActiveFocus(Qt::OtherFocusReason);
}

} // namespace tarnwick
