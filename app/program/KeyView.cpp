#include "app/program/KeyView.h"

#include "platform/windows/KeyCodes.h"

#include <QKeyEvent>
#include <QQuickWindow>

namespace tarnwick {

KeyView::KeyView(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemIsFocusScope, false); }

bool KeyView::hasKeys() const {
    if (!window() || !window()->activeFocusItem())
        return true;
    for (const QQuickItem* item = window()->activeFocusItem(); item; item = item->parentItem())
        if (item == this)
            return true;
    return window()->activeFocusItem() == window()->contentItem();
}

void KeyView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        event->ignore(); // it moves the focus
        return;
    }
    if (const auto code = windows::hardwareKeyCode(event->key()))
        Q_EMIT keyDown(*code);
    event->accept();
}

void KeyView::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange && data.window)
        setFocus(true);
    QQuickItem::itemChange(change, data);
}

} // namespace tarnwick
