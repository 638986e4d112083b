#include "app/window/WindowDrag.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QStyleHints>

#include <algorithm>

namespace tarnwick {

namespace {

/// Nobody presses a button again so soon, in ms.
constexpr quint64 echoTime = 30;

/// The window's property that says that an edge is being pulled. By the first move that comes back from
/// the window manager nobody holds the pointer any more.
constexpr const char* resizing = "isResizing";

/// Beyond what the toolkit takes for a drag, in pixels.
constexpr int beyondDrag = 6;

double distance(const QPointF& a, const QPointF& b) {
    return std::max(std::abs(a.x() - b.x()), std::abs(a.y() - b.y()));
}

} // namespace

int WindowDrag::threshold() { return QGuiApplication::styleHints()->startDragDistance() + beyondDrag; }

// Of the application's events, because an open popup keeps the press beside it from the window's own filters.
WindowDrag::WindowDrag(QQuickWindow& window) : m_window(window) { qGuiApp->installEventFilter(this); }

bool WindowDrag::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &m_window)
        return false;
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
        if (!m_pressedAt || distance(move.position(), *m_pressedAt) < threshold())
            break;
        m_pressedAt.reset();
        if (!isWanted(move))
            start(move);
        break;
    }
    case QEvent::MouseButtonRelease:
        m_pressedAt.reset();
        m_releasedAt = static_cast<const QMouseEvent&>(*event).timestamp();
        m_releasedButton = static_cast<const QMouseEvent&>(*event).button();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// When an X11 window manager hands the pointer back after a move, Qt takes the button for pressed once
/// more, at the very moment of its release. Let through, it would be a click, or the next drag.
bool WindowDrag::isEcho(const QMouseEvent& press) const {
    return press.button() == m_releasedButton && press.timestamp() - m_releasedAt < echoTime;
}

/// Whether what was pressed needs the drag itself.
bool WindowDrag::isWanted(QMouseEvent& move) const {
    if (m_window.property(resizing).toBool())
        return true;
    const QObject* grabber = move.exclusiveGrabber(move.point(0));
    if (const auto* item = qobject_cast<const QQuickItem*>(grabber))
        return item->keepMouseGrab();
    return grabber && grabber->inherits("QQuickDragHandler");
}

void WindowDrag::start(QMouseEvent& move) {
    if (!m_window.windowStates().testFlag(Qt::WindowFullScreen))
        m_window.startSystemMove();
    // Whatever was pressed shall not take the end for a click: the window goes with the pointer, so the
    // button is released where it was pressed. Only another grab cancels a press for items and handlers
    // alike.
    move.setExclusiveGrabber(move.point(0), m_window.contentItem());
}

} // namespace tarnwick
