#pragma once

#include "app/desktop/DesktopApplication.h"
#include "app/desktop/FontFileChooser.h"
#include "app/desktop/LoginAgent.h"
#include "app/desktop/Renderer.h"
#include "app/desktop/RunningCopies.h"
#include "app/desktop/StopSignals.h"
#include "app/program/MenuShortcuts.h"
#include "app/program/MusicSession.h"
#include "app/program/PlayerKeys.h"
#include "app/program/PreferencesDoor.h"
#include "app/program/TarnwickApp.h"
#include "app/window/RestingPointer.h"
#include "app/window/WindowDrag.h"
#include "display/state/TarnwickView.h"
#include "platform/animation/ReducedMotion.h"
#include "platform/defaults/FileDefaults.h"
#include "platform/dispatch/SerialQueue.h"
#include "platform/fonts/FontRegistry.h"
#include "platform/menus/GlobalMenu.h"
#include "platform/menus/TrayIcon.h"
#include "platform/power/DBusPowerManager.h"
#include "platform/windows/HeldKeys.h"
#include "platform/windows/QtWindowSystem.h"
#include "platform/windows/RemoteKeys.h"
#include "platform/windows/SingleTouch.h"
#include "visuals/DockIcon.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <optional>

namespace tarnwick {

class KeyView;

/// The display as it runs: everything that it is made of, and the order in which it comes up. The window
/// with the splash comes first; what only the display needs follows while the splash is seen.
class DisplayProgram : public QObject {
    Q_OBJECT

public:
    /// What `invocation` says about the player and the window holds.
    explicit DisplayProgram(const Invocation& invocation);
    ~DisplayProgram() override;

    /// Runs until the user, or the session, ends it; the exit code.
    int run();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TarnwickApp::Parts appParts();
    TarnwickView::Parts viewParts();
    bool openWindow();
    void placeWindow();
    bool canComeBack() const;
    void loadFonts();
    void takeHands();
    void joinDesktop();
    void joinTray(const QDBusConnection& bus);
    void followMotion(const QDBusConnection& bus);
    void makeDisplay();
    void tellMissingPlayer();
    void showMessage(const QString& message);
    void showDisplay();
    void followPhase();
    void followFocus();

    /// The window that has the keyboard, or else the main window, which then comes to the front.
    QQuickWindow& windowInUse();

    const Invocation m_invocation;
    const bool m_startsInFullScreen;
    MusicSession m_session;
    RunningCopies m_copies;
    defaults::FileDefaults m_defaults;
    power::DBusPowerManager m_power;
    windows::QtWindowSystem m_windows;
    windows::RemoteKeys m_remoteKeys;
    windows::SingleTouch m_singleTouch;
    dispatch::SerialQueue m_agentQueue;
    LoginAgent m_loginAgent;
    TarnwickApp m_app;

    Renderer m_renderer;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    KeyView* m_keys = nullptr; ///< in the window
    std::optional<WindowDrag> m_drag;
    std::optional<MenuShortcuts> m_shortcuts;

    fonts::FontRegistry m_fontRegistry;
    std::optional<ClockFontManager> m_clockFonts;
    std::optional<TrackInfoFontManager> m_trackInfoFonts;
    FontChooser m_chooseFonts;
    std::optional<PreferencesDoor> m_preferencesOfMenu;
    std::optional<PreferencesDoor> m_preferencesOfBar;

    DockIcon m_dockIcon;
    std::unique_ptr<TarnwickView> m_view;
    std::unique_ptr<QQuickItem> m_display;

    std::optional<PlayerKeys> m_playerKeys;
    std::optional<windows::HeldKeys> m_heldKeys; // sees the keys first, so it comes last
    std::optional<RestingPointer> m_restingPointer;
    std::optional<DesktopApplication> m_desktop;
    std::optional<animation::ReducedMotion> m_reducedMotion;
    std::optional<menus::GlobalMenu> m_globalMenu;
    std::optional<menus::TrayIcon> m_tray;
    StopSignals m_stopSignals;
};

} // namespace tarnwick
