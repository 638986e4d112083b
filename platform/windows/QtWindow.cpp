#include "platform/windows/QtWindow.h"

#include "platform/windows/Frames.h"
#include "platform/windows/QtWindowSystem.h"
#include "platform/windows/SizeHints.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace tarnwick::windows {

namespace {

QRect firstScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect();
}

/// What the screens have left for windows.
QList<QRect> freeAreas() {
    QList<QRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    return areas;
}

/// Whether windows know where they are and may say where they want to be.
bool placesAreKnown() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

} // namespace

QtWindow::QtWindow(QWindow& window, dispatch::Dispatcher& dispatcher)
    : m_window(window), m_dispatcher(dispatcher), m_settledSize(window.size()) {
    m_window.installEventFilter(this);
    // A desktop that moves what was on the screen does so first, though perhaps not far enough.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](const QScreen* screen) {
        if (m_window.screen() != screen)
            return;
        m_screenWork.cancel();
        m_screenWork = m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), QtWindowSystem::settlingTime,
                                               [this] { leaveLostScreen(); });
    });
    lookWhetherSeen();
}

QtWindow::~QtWindow() {
    m_ratioWork.cancel();
    m_screenWork.cancel();
}

void QtWindow::setLevel(Level level) {
    m_level = level;
    const bool floats = level == Level::Floating;
    if (m_window.flags().testFlag(Qt::WindowStaysOnTopHint) != floats)
        m_window.setFlag(Qt::WindowStaysOnTopHint, floats);
}

void QtWindow::toggleFullScreen() {
    m_window.setWindowStates(m_window.windowStates() ^ Qt::WindowFullScreen);
    hintAtRatio();
}

void QtWindow::setTitleBarHidden(bool hidden) {
    if (m_window.flags().testFlag(Qt::FramelessWindowHint) != hidden)
        m_window.setFlag(Qt::FramelessWindowHint, hidden);
}

void QtWindow::setContentAspectRatio(QSize ratio) {
    m_ratio = ratio;
    hintAtRatio();
    keepRatioSoon();
}

void QtWindow::setFrame(const QRectF& frame) {
    if (!isFullScreen()) // then it has the screen's
        place(broughtOntoScreen(rectangleFromFrame(frame, firstScreen()), freeAreas()));
}

void QtWindow::place(const QRect& wanted) {
    m_settledSize = wanted.size();
    if (placesAreKnown())
        m_window.setFramePosition(wanted.topLeft());
    m_window.resize(wanted.size());
    hintAtRatio();
}

void QtWindow::leaveLostScreen() {
    if (!placesAreKnown())
        return;
    const QRect now(m_window.framePosition(), m_window.size());
    if (!isFullScreen()) {
        place(whollyOnScreen(now, freeAreas()));
    } else if (!QGuiApplication::screenAt(now.center())) {
        // A window fills the screen that it is on, so it goes there as an ordinary one.
        QRect windowed({}, m_settledSize);
        windowed.moveCenter(now.center());
        toggleFullScreen();
        place(whollyOnScreen(windowed, freeAreas()));
        toggleFullScreen();
    }
}

void QtWindow::setShouldClose(std::function<bool()> shouldClose) { m_shouldClose = std::move(shouldClose); }

void QtWindow::orderFront() {
    const Qt::WindowStates states = m_window.windowStates() & ~Qt::WindowMinimized;
    m_window.setVisible(true);
    if (m_window.windowStates() != states) // showing a window may have put it back to normal
        m_window.setWindowStates(states);
    hintAtRatio();
    m_window.raise();
    m_window.requestActivate();
}

void QtWindow::orderOut() { m_window.setVisible(false); }

void QtWindow::miniaturize() { m_window.setWindowStates(m_window.windowStates() | Qt::WindowMinimized); }

void QtWindow::close() {
    m_closing = true;
    m_window.close();
    m_closing = false;
}

bool QtWindow::isFullScreen() const { return m_window.windowStates().testFlag(Qt::WindowFullScreen); }

bool QtWindow::isVisible() const { return m_window.isVisible(); }

QRectF QtWindow::frame() const {
    QRect rectangle(m_window.framePosition(), m_window.size());
    if (!placesAreKnown() && m_window.screen())
        rectangle = centred(m_window.size(), m_window.screen()->geometry());
    return frameFromRectangle(rectangle, firstScreen());
}

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
        Q_EMIT didMove();
        break;
    case QEvent::Resize:
        keepRatioSoon();
        Q_EMIT didResize();
        break;
    case QEvent::Close:
        if (!mayClose()) {
            event->ignore();
            return true;
        }
        Q_EMIT willClose();
        break;
    case QEvent::Expose:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        lookWhetherSeen();
        break;
    default:
        break;
    }
    return Window::eventFilter(watched, event);
}

bool QtWindow::mayClose() { return m_closing || !m_shouldClose || m_shouldClose(); }

void QtWindow::lookWhetherSeen() {
    const bool canBeSeen = m_window.isVisible() && m_window.isExposed() &&
                           !m_window.windowStates().testFlag(Qt::WindowMinimized);
    if (std::exchange(m_canBeSeen, canBeSeen) != canBeSeen)
        Q_EMIT canBeSeenChanged();
}

void QtWindow::hintAtRatio() { hintAtAspectRatio(m_window, m_ratio); }

void QtWindow::keepRatioSoon() {
    m_ratioWork.cancel();
    if (!m_ratio.isEmpty())
        m_ratioWork = m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), QtWindowSystem::settlingTime,
                                              [this] { keepRatio(); });
}

void QtWindow::keepRatio() {
    if (m_window.windowStates() != Qt::WindowNoState || !m_window.screen())
        return;
    const QSize size = m_window.size();
    // A pixel more or less is the desktop's rounding.
    if (std::abs(size.width() * m_ratio.height() - size.height() * m_ratio.width()) >
        m_ratio.width() + m_ratio.height())
        m_window.resize(
            inProportion(size, m_settledSize, m_ratio, m_window.screen()->availableGeometry().size()));
    m_settledSize = m_window.size();
}

} // namespace tarnwick::windows
