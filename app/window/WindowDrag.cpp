#include "app/window/WindowDrag.h"

#include <QMouseEvent>
#include <QQuickItem>

namespace tarnwick {

namespace {

/// Nobody presses a button again so soon, in ms.
constexpr quint64 echoTime = 30;

/// The window's property that says that an edge is being pulled. By the first move that comes back from
/// the window manager nobody holds the pointer any more.
constexpr const char* resizing = "isResizing";

} // namespace

WindowDrag::WindowDrag(QQuickWindow& window) : m_window(window) { window.installEventFilter(this); }

bool WindowDrag::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto& press = static_cast<const QMouseEvent&>(*event);
        if (isEcho(press))
            return true;
        m_window.setProperty(resizing, false);
        m_pressedAt = press.button() == Qt::LeftButton ? std::optional(press.position()) : std::nullopt;
        break;
    }
    case QEvent::MouseMove: {
        auto& move = static_cast<QMouseEvent&>(*event);
        if (!m_pressedAt || (move.position() - *m_pressedAt).manhattanLength() < threshold)
            break;
        m_pressedAt.reset();
        if (isFree(move))
            start();
        break;
    }
    case QEvent::MouseButtonRelease:
        m_pressedAt.reset();
        m_releasedAt = static_cast<const QMouseEvent&>(*event).timestamp();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// When an X11 window manager hands the pointer back after a move, Qt takes the button for pressed once
/// more, at the very moment of its release. Let through, it would be a click, or the next drag.
bool WindowDrag::isEcho(const QMouseEvent& press) const {
    return m_releasedAt != 0 && press.timestamp() - m_releasedAt < echoTime;
}

bool WindowDrag::isFree(QMouseEvent& move) const {
    if (m_window.windowStates().testFlag(Qt::WindowFullScreen) || m_window.property(resizing).toBool())
        return false;
    const QObject* grabber = move.exclusiveGrabber(move.point(0));
    if (const auto* item = qobject_cast<const QQuickItem*>(grabber))
        return !item->keepMouseGrab();
    return !grabber || !grabber->inherits("QQuickDragHandler");
}

void WindowDrag::start() {
    if (!m_window.startSystemMove())
        return;
    if (QQuickItem* pressed = m_window.mouseGrabberItem())
        pressed->ungrabMouse(); // it shall not take the end for a click
}

} // namespace tarnwick
