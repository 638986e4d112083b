#include "app/window/RestingPointer.h"

#include <QGuiApplication>
#include <QMouseEvent>

#include <utility>

namespace tarnwick {

RestingPointer::RestingPointer(dispatch::Dispatcher& dispatcher, QWindow& window)
    : m_dispatcher(dispatcher), m_window(window) {
    qGuiApp->installEventFilter(this);
    connect(&window, &QWindow::windowStateChanged, this, &RestingPointer::moved);
    moved();
}

RestingPointer::~RestingPointer() {
    m_rest.cancel();
    show();
    qGuiApp->removeEventFilter(this);
}

bool RestingPointer::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType())
        return false;
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress: {
        // What changes under a pointer that rests is told as a move as well.
        const QPointF place = static_cast<const QMouseEvent&>(*event).globalPosition();
        const bool isMove =
            event->type() == QEvent::MouseButtonPress || place != std::exchange(m_place, place);
        m_isOver = watched == &m_window;
        if (isMove)
            moved();
        break;
    }
    case QEvent::TouchBegin:
        hide();
        break;
    default:
        break;
    }
    return false;
}

void RestingPointer::moved() {
    show();
    m_rest.cancel();
    m_rest = m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), restTime, [self = QPointer(this)] {
        if (self && self->m_isOver)
            self->hide();
    });
}

void RestingPointer::hide() {
    if (!m_window.windowStates().testFlag(Qt::WindowFullScreen) || std::exchange(m_isHidden, true))
        return;
    QGuiApplication::setOverrideCursor(Qt::BlankCursor); // what lies under the pointer has cursors of its own
    Q_EMIT isHiddenChanged(true);
}

void RestingPointer::show() {
    if (!std::exchange(m_isHidden, false))
        return;
    QGuiApplication::restoreOverrideCursor();
    Q_EMIT isHiddenChanged(false);
}

} // namespace tarnwick
