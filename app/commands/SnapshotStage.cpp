#include "app/commands/SnapshotStage.h"

#include "app/program/MusicSession.h"
#include "canvas/RenderQueue.h"

#include <QTimeZone>

namespace tarnwick {

namespace {

/// A multiple of what the disc is paced by makes no difference to a still picture.
constexpr std::chrono::milliseconds longestStep{20};

constexpr unsigned seed = 7;

/// What the clock of the display shows first.
QDateTime instant() { return {QDate(2026, 11, 22), QTime(21, 47), QTimeZone::utc()}; }

} // namespace

/// One window that is, or is not, in full screen.
class SnapshotStage::OneWindow : public windows::WindowSystem {
public:
    explicit OneWindow(bool isFullScreen) : m_window(isFullScreen) {}

    void setApplicationIcon(const QImage&) override {}
    QList<windows::Window*> windows() const override { return {const_cast<Still*>(&m_window)}; }
    windows::Window* mainWindow() const override { return firstWindow(); }

private:
    class Still : public windows::Window {
    public:
        explicit Still(bool isFullScreen) : m_isFullScreen(isFullScreen) {}

        void setLevel(windows::Level) override {}
        void toggleFullScreen() override {}
        void setTitleBarHidden(bool) override {}
        void setContentAspectRatio(QSize) override {}
        void setFrame(const QRectF&) override {}
        void setShouldClose(std::function<bool()>) override {}
        void orderFront() override {}
        void orderOut() override {}
        void miniaturize() override {}
        void close() override {}
        windows::Level level() const override { return windows::Level::Normal; }
        bool isFullScreen() const override { return m_isFullScreen; }
        bool isVisible() const override { return true; }
        bool canBeSeen() const override { return true; }
        QRectF frame() const override { return {}; }

    private:
        const bool m_isFullScreen;
    };

    Still m_window;
};

/// Nobody listens to the scripts of a picture.
class SnapshotStage::SilentHost : public script::Host {
public:
    explicit SilentHost(dispatch::Dispatcher& dispatcher) : m_dispatcher(dispatcher) {}

    void log(const QString&) override {}
    void displayDialog(const QString&) override {}
    void delay(std::chrono::nanoseconds duration) override { m_dispatcher.sleepFor(duration); }
    quint32 random(quint32) override { return 0; }

private:
    dispatch::Dispatcher& m_dispatcher;
};

SnapshotStage::SnapshotStage(const Options& options)
    : m_images(std::make_shared<images::ImageStore>(m_dispatcher)),
      m_windows(std::make_unique<OneWindow>(options.isFullScreen)),
      m_host(std::make_unique<SilentHost>(m_dispatcher)),
      m_music({.scene = options.scene}, m_dispatcher, *m_images), m_interpreter(m_music.scripting()),
      m_source({m_dispatcher,
                std::make_shared<ScriptRunner>(
                    m_dispatcher, [this](const QString& text) { return m_interpreter.run(text, *m_host); },
                    [](const QString&) {}),
                m_images, Catalogue::shared().image(QStringLiteral("nocover")), [](const QString&) {}}),
      m_background(m_dispatcher, seededRandomIndex(seed)) {
    renderqueue::setDispatcher(&m_dispatcher);
    MusicSource::setShared(&m_source);
    for (const auto& [key, value] : options.preferences)
        m_defaults.set(key, value);
    m_settings = std::make_unique<Settings>(Settings::Parts{m_dispatcher, m_defaults, *m_windows});
    m_view = std::make_unique<TarnwickView>(TarnwickView::Parts{
        .dispatcher = m_dispatcher,
        .musicSource = m_source,
        .settings = *m_settings,
        .backgroundManager = m_background,
        .windows = *m_windows,
        .images = *m_images,
        .clock = &m_clock,
        .fonts = &m_fonts,
        .randomIndex = seededRandomIndex(seed),
        .wallClock = [this] {
            return instant().addMSecs(
                std::chrono::duration_cast<std::chrono::milliseconds>(m_dispatcher.now()).count());
        }});
    followPlayer(m_source, m_music, *m_view->controls());
}

SnapshotStage::~SnapshotStage() {
    MusicSource::setShared(nullptr);
    renderqueue::setDispatcher(nullptr);
}

void SnapshotStage::show(std::unique_ptr<QQuickItem> root, QSize size) {
    m_renderer = std::make_unique<SceneRenderer>(std::move(root), size);
    m_view->appear();
    advance(std::chrono::milliseconds::zero());
}

void SnapshotStage::advance(std::chrono::milliseconds duration) {
    m_dispatcher.runUntilIdle();
    m_animations.step(0);
    while (duration.count() > 0) {
        const auto step = std::min(duration, longestStep);
        m_dispatcher.advance(step);
        m_clock.advance(step);
        m_animations.step(step.count());
        m_renderer->layOut();
        duration -= step;
    }
    m_dispatcher.runUntilIdle();
}

QImage SnapshotStage::render() {
    QImage picture = m_renderer->render();
    // What the first frame laid out may have asked for pictures of its size.
    m_dispatcher.runUntilIdle();
    picture = m_renderer->render();
    return picture;
}

} // namespace tarnwick
