#include "app/window/MainWindow.h"

namespace tarnwick {

namespace {

const auto originXKey = QStringLiteral("WindowOriginX");
const auto originYKey = QStringLiteral("WindowOriginY");
const auto widthKey = QStringLiteral("WindowWidth");
const auto heightKey = QStringLiteral("WindowHeight");

const QSize contentAspectRatio(2, 1);

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

void MainWindow::setUp() {
    windows::Window* window = m_parts.windows.firstWindow();
    if (!window)
        return;
    window->setTitleBarHidden(true);
    if (!window->isFullScreen())
        window->setContentAspectRatio(contentAspectRatio);
    window->setShouldClose([this, window] { return m_delegate.windowShouldClose(*window); });
    if (const auto frame = storedFrame())
        window->setFrame(*frame);
    window->orderFront();
    if (m_parts.settings.launchInFullscreen() && !window->isFullScreen())
        window->toggleFullScreen();
    connect(window, &windows::Window::didMove, this, &MainWindow::saveFrame);
    connect(window, &windows::Window::didResize, this, &MainWindow::saveFrame);
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

void MainWindow::saveFrame() {
    const windows::Window* window = m_parts.windows.firstWindow();
    if (!window)
        return;
    const QRectF frame = window->frame();
    m_parts.defaults.setSoon(originXKey, frame.x());
    m_parts.defaults.setSoon(originYKey, frame.y());
    m_parts.defaults.setSoon(widthKey, frame.width());
    m_parts.defaults.setSoon(heightKey, frame.height());
}

} // namespace tarnwick
