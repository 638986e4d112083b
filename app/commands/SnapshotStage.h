#pragma once

#include "display/SceneRenderer.h"
#include "display/state/TarnwickView.h"
#include "platform/animation/Clock.h"
#include "platform/animation/VirtualAnimationDriver.h"
#include "platform/defaults/MemoryDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "platform/fonts/FontRegistry.h"
#include "players/demo/DemoMusic.h"
#include "script/run/Host.h"
#include "script/run/Interpreter.h"

#include <QQmlEngine>

#include <map>

namespace tarnwick {

/// The whole program on the demo, without a screen and on a time that only moves when it is told to, so
/// that the same calls give the same pictures.
class SnapshotStage {
public:
    struct Options {
        players::DemoScene scene = players::DemoScene::Playing;
        bool isFullScreen = false;
        std::map<QString, defaults::Value> preferences; ///< all others have their defaults
    };

    explicit SnapshotStage(const Options& options);
    ~SnapshotStage();

    /// Shows `root` at `size` device pixels.
    void show(std::unique_ptr<QQuickItem> root, QSize size);

    /// Lets the time pass for the program, its animations and its disc.
    void advance(std::chrono::milliseconds duration);

    /// What is on the stage now.
    QImage render();

    QQmlEngine& engine() { return m_engine; }
    TarnwickView& view() { return *m_view; }
    Settings& settings() { return *m_settings; }

private:
    class OneWindow;
    class SilentHost;

    dispatch::VirtualDispatcher m_dispatcher;
    animation::VirtualAnimationDriver m_animations;
    animation::ManualClock m_clock;
    std::shared_ptr<images::ImageStore> m_images;
    defaults::MemoryDefaults m_defaults;
    fonts::FontRegistry m_fonts; ///< knows what is installed
    std::unique_ptr<OneWindow> m_windows;
    std::unique_ptr<SilentHost> m_host;
    players::DemoMusic m_music;
    script::Interpreter m_interpreter;
    MusicSource m_source;
    BackgroundManager m_background;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<TarnwickView> m_view;
    QQmlEngine m_engine;
    std::unique_ptr<SceneRenderer> m_renderer;
};

} // namespace tarnwick
