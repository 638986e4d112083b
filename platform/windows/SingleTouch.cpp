#include "platform/windows/SingleTouch.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QTouchEvent>

#include <utility>

namespace tarnwick::windows {

namespace {

/// Whether what has the touch waits for the finger to move however long it stays, like a slider.
bool isPatient(const QObject* grabber) {
    return grabber &&
           (grabber->property("preventStealing").toBool() || grabber->inherits("QQuickDragHandler"));
}

} // namespace

SingleTouch::SingleTouch(dispatch::Dispatcher& dispatcher) : m_dispatcher(dispatcher) {
    qGuiApp->installEventFilter(this);
}

SingleTouch::~SingleTouch() {
    m_hold.cancel();
    qGuiApp->removeEventFilter(this);
}

dispatch::Duration SingleTouch::holdTime() {
    return std::chrono::milliseconds(QGuiApplication::styleHints()->mousePressAndHoldInterval());
}

bool SingleTouch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        if (auto* window = qobject_cast<QWindow*>(watched);
            window && take(*window, static_cast<QTouchEvent&>(*event))) {
            event->accept(); // else it would be told once more, as a mouse's
            return true;
        }
        return false;
    default:
        return false;
    }
}

/// Whether the event is not for the window.
bool SingleTouch::take(QWindow& window, const QTouchEvent& touch) {
    if (touch.type() == QEvent::TouchBegin) {
        m_isDropped = false;
        awaitHold(window, touch);
    }
    if (touch.pointCount() > 1 && !m_isDropped)
        drop();
    else if ((touch.points().constFirst().position() - m_place).manhattanLength() >=
             QGuiApplication::styleHints()->startDragDistance())
        m_hold.cancel();
    if (touch.type() != QEvent::TouchEnd)
        return m_isDropped;
    m_hold.cancel();
    disconnect(m_grabs);
    m_window = nullptr;
    return std::exchange(m_isDropped, false);
}

void SingleTouch::awaitHold(QWindow& window, const QTouchEvent& touch) {
    m_window = &window;
    m_device = touch.pointingDevice();
    m_place = touch.points().constFirst().position();
    m_grabber = nullptr;
    disconnect(m_grabs);
    m_grabs = connect(m_device, &QPointingDevice::grabChanged, this,
                      [this](QObject* grabber, QPointingDevice::GrabTransition transition) {
                          if (transition == QPointingDevice::GrabExclusive)
                              m_grabber = grabber;
                      });
    m_hold.cancel();
    m_hold = m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), holdTime(), [self = QPointer(this)] {
        if (self)
            self->hold();
    });
}

void SingleTouch::hold() {
    if (!m_window || isPatient(m_grabber))
        return;
    drop();
    Q_EMIT held(m_window, m_place);
}

/// Takes the touch back from whatever has it.
void SingleTouch::drop() {
    m_isDropped = true;
    m_hold.cancel();
    QTouchEvent cancelled(QEvent::TouchCancel, m_device);
    if (m_window)
        QCoreApplication::sendEvent(m_window, &cancelled);
}

} // namespace tarnwick::windows
