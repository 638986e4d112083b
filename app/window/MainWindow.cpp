#include "app/window/MainWindow.h"

#include <utility>

namespace tarnwick {

namespace {

const auto originXKey = QStringLiteral("WindowOriginX");
const auto originYKey = QStringLiteral("WindowOriginY");
const auto widthKey = QStringLiteral("WindowWidth");
const auto heightKey = QStringLiteral("WindowHeight");

const QSize contentAspectRatio(2, 1);

/// Stands for an origin of 0, which would mean that there is none.
constexpr double nearlyZero = 0.001;

} // namespace

bool MainWindowDelegate::windowShouldClose(windows::Window& window) const {
    // A window that nothing could bring back would be lost with the music playing on.
    if (m_canComeBack())
        window.orderOut();
    else
        window.miniaturize();
    return false;
}

MainWindow::MainWindow(Parts parts) : m_parts(std::move(parts)), m_delegate(m_parts.canComeBack) {}

void MainWindow::restoreFrame() {
    windows::Window* window = m_parts.windows.firstWindow();
    if (!window || std::exchange(m_isFrameRestored, true))
        return;
    if (const auto frame = storedFrame())
        window->setFrame(*frame);
    if (!window->isFullScreen()) // also for the day when it leaves full screen
        window->setContentAspectRatio(contentAspectRatio);
    connect(window, &windows::Window::canBeSeenChanged, this, [this, window] { followFrame(*window); });
}

void MainWindow::setUp() {
    windows::Window* window = m_parts.windows.firstWindow();
    if (!window)
        return;
    window->setTitleBarHidden(true);
    if (!window->isFullScreen())
        window->setContentAspectRatio(contentAspectRatio);
    window->setShouldClose([this, window] { return m_delegate.windowShouldClose(*window); });
    restoreFrame();
    window->orderFront();
    if (m_parts.settings.launchInFullscreen() && !window->isFullScreen())
        window->toggleFullScreen();
    followFrame(*window);
    for (windows::Window* other : m_parts.windows.windows())
        if (other != window)
            other->close();
}

void MainWindow::show() {
    if (windows::Window* window = m_parts.windows.firstWindow())
        window->orderFront();
}

std::optional<QRectF> MainWindow::storedFrame() const {
    const auto number = [this](const QString& key) { return m_parts.defaults.get<double>(key).value_or(0); };
    const QRectF frame(number(originXKey), number(originYKey), number(widthKey), number(heightKey));
    if (frame.x() == 0 || frame.y() == 0 || frame.width() == 0 || frame.height() == 0)
        return std::nullopt;
    return frame;
}

/// From the time when the window is first seen: how the desktop places it is nothing to be kept.
void MainWindow::followFrame(windows::Window& window) {
    if (std::exchange(m_isFrameFollowed, true))
        return;
    connect(&window, &windows::Window::didMove, this, &MainWindow::saveFrame);
    connect(&window, &windows::Window::didResize, this, &MainWindow::saveFrame);
}

void MainWindow::saveFrame() {
    const windows::Window* window = m_parts.windows.firstWindow();
    if (!window)
        return;
    m_isFrameStored = true;
    store(window->frame(), window->isWindowed());
}

void MainWindow::leave() {
    const windows::Window* window = m_parts.windows.firstWindow();
    if (window && m_isFrameStored && !window->isWindowed())
        store(window->windowedFrame(), true);
}

void MainWindow::store(QRectF frame, bool isWindowed) {
    if (isWindowed) {
        if (frame.x() == 0)
            frame.moveLeft(nearlyZero);
        if (frame.y() == 0)
            frame.moveTop(nearlyZero);
    }
    m_parts.defaults.setSoon(originXKey, frame.x());
    m_parts.defaults.setSoon(originYKey, frame.y());
    m_parts.defaults.setSoon(widthKey, frame.width());
    m_parts.defaults.setSoon(heightKey, frame.height());
}

} // namespace tarnwick
