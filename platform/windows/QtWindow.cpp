#include "platform/windows/QtWindow.h"

#include "platform/windows/Frames.h"
#include "platform/windows/QtWindowSystem.h"
#include "platform/windows/SizeHints.h"
#include "platform/windows/X11Desktop.h"

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
    : m_window(window), m_dispatcher(dispatcher), m_settled(window.framePosition(), window.size()) {
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
    m_settlingWork.cancel();
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
    if (!hasWindowManager()) // nobody else does it
        m_window.setGeometry(isFullScreen() ? m_window.screen()->geometry() : m_settled);
    hintAtRatio();
}

void QtWindow::setTitleBarHidden(bool hidden) {
    if (m_window.flags().testFlag(Qt::FramelessWindowHint) != hidden)
        m_window.setFlag(Qt::FramelessWindowHint, hidden);
}

void QtWindow::setContentAspectRatio(QSize ratio) {
    m_ratio = ratio;
    hintAtRatio();
    settleSoon();
}

void QtWindow::setFrame(const QRectF& frame) {
    if (!isFullScreen()) // then it has the screen's
        place(broughtOntoScreen(rectangleFromFrame(frame, firstScreen()), freeAreas()));
}

void QtWindow::place(const QRect& wanted) {
    m_settled = wanted;
    if (placesAreKnown())
        m_window.setFramePosition(wanted.topLeft());
    m_window.resize(wanted.size());
    hintAtRatio();
}

void QtWindow::leaveLostScreen() {
    if (!placesAreKnown())
        return;
    if (!isFullScreen()) {
        place(whollyOnScreen(rectangle(), freeAreas()));
    } else if (!QGuiApplication::screenAt(rectangle().center())) {
        // A window fills the screen that it is on, so it goes there as an ordinary one.
        QRect windowed({}, m_settled.size());
        windowed.moveCenter(rectangle().center());
        toggleFullScreen();
        place(whollyOnScreen(windowed, freeAreas()));
        toggleFullScreen();
    }
}

void QtWindow::setShouldClose(std::function<bool()> shouldClose) { m_shouldClose = std::move(shouldClose); }

void QtWindow::orderFront() {
    const Qt::WindowStates states = m_window.windowStates() & ~Qt::WindowMinimized;
    const bool wasHidden = !m_window.isVisible();
    if (wasHidden)
        hintAtOrdinaryStart(m_window); // it may still say minimised, from the last time
    m_window.setVisible(true);
    if (wasHidden)
        restateWhatBelongsTo(m_window);
    if (m_window.windowStates() != states) // showing a window may have put it back to normal
        m_window.setWindowStates(states);
    hintAtRatio();
    m_window.raise();
    m_window.requestActivate();
    useStartupId(m_window);
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

bool QtWindow::isWindowed() const {
    return !(m_window.windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen));
}

QRectF QtWindow::frame() const { return frameFromRectangle(rectangle(), firstScreen()); }

QRectF QtWindow::windowedFrame() const {
    return isWindowed() ? frame() : frameFromRectangle(m_settled, firstScreen());
}

QRect QtWindow::rectangle() const {
    if (!placesAreKnown() && m_window.screen())
        return centred(m_window.size(), m_window.screen()->geometry());
    return {m_window.framePosition(), m_window.size()};
}

void QtWindow::setIcon(const QIcon& icon) { m_window.setIcon(icon); }

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
        settleSoon();
        Q_EMIT didMove();
        break;
    case QEvent::Resize:
        settleSoon();
        Q_EMIT didResize();
        break;
    case QEvent::Close:
        if (!mayClose()) {
            event->ignore();
            return true;
        }
        Q_EMIT willClose();
        break;
    case QEvent::WindowStateChange: // which the desktop may tell after the new size
        lookWhetherSeen();
        settleSoon();
        Q_EMIT didResize();
        break;
    case QEvent::Expose:
    case QEvent::Hide:
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

void QtWindow::settleSoon() {
    m_settlingWork.cancel();
    m_settlingWork =
        m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), QtWindowSystem::settlingTime, [this] { settle(); });
}

void QtWindow::settle() {
    if (m_window.windowStates() != Qt::WindowNoState || !m_window.screen())
        return;
    keepRatio();
    m_settled = rectangle();
}

void QtWindow::keepRatio() {
    const QSize size = m_window.size();
    // A pixel more or less is the desktop's rounding.
    if (!m_ratio.isEmpty() && std::abs(size.width() * m_ratio.height() - size.height() * m_ratio.width()) >
                                  m_ratio.width() + m_ratio.height())
        m_window.resize(
            inProportion(size, m_settled.size(), m_ratio, m_window.screen()->availableGeometry().size()));
}

} // namespace tarnwick::windows
