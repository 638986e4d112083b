#pragma once

#include "app/window/MainWindow.h"
#include "music/MusicSource.h"
#include "platform/menus/MenuModel.h"
#include "settings/Settings.h"
#include "visuals/BackgroundManager.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>

namespace tarnwick {

/// What is to be seen of the application.
enum class ScenePhase { Active, Inactive, Background };

/// The application: owns what every view shares, shows the splash and then the display, does the chores
/// of a start, and offers the menus. Main thread only.
class TarnwickApp : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one, and it is handed in")

    /// The splash is shown, not the display.
    Q_PROPERTY(bool showSplash READ showSplash NOTIFY showSplashChanged)

    /// The window's own menu: a list of maps with `number`, `title`, `shortcut` (as text), `isMenu`,
    /// `isSeparator` and `entries`.
    Q_PROPERTY(QVariantList contextEntries READ contextEntries NOTIFY contextEntriesChanged)

public:
    static constexpr dispatch::Duration splashTime = std::chrono::seconds(2);
    static constexpr dispatch::Duration startupPlaylistDelay = std::chrono::seconds(2);

    /// Everything must outlive the application.
    struct Parts {
        Settings::Parts settings;
        MusicSource& musicSource;
        std::function<bool()> isFirstCopy;                       ///< none that was started before it runs
        std::function<bool()> canComeBack;                       ///< see `MainWindowDelegate`
        std::function<windows::Window*()> makePreferencesWindow; ///< may be empty, may give none
        std::function<void(bool forClock)> importFonts;
        std::function<void()> quit;
    };

    explicit TarnwickApp(Parts parts);
    ~TarnwickApp() override;

    /// The window shows the splash now; it ends by itself, and the start-up goes on from there.
    void splashAppeared();

    /// Starting at login is off for the session as soon as the application is not at the front.
    void setScenePhase(ScenePhase phase);

    /// Opens the preferences window, or brings the one that is open to the front.
    void openPreferences();

    /// Asks the player for its playlists again, if this copy fills the menu at all.
    Q_INVOKABLE void refreshMenus();

    /// See `tarnwick::keyTable`.
    Q_INVOKABLE QVariantList keyTable() const;

    /// Does what an entry of `contextEntries` is for.
    Q_INVOKABLE void triggerMenu(int number) { m_contextMenu.trigger(number); }

    /// Closes the main window the way its close button does.
    Q_INVOKABLE void closeWindow();
    Q_INVOKABLE void minimizeWindow();
    Q_INVOKABLE void toggleFullScreen();

    bool showSplash() const { return m_showSplash; }
    const QStringList& playlistNames() const { return m_playlistNames; }
    Settings& settings() { return m_settings; }
    BackgroundManager& backgroundManager() { return m_backgroundManager; }
    MainWindow& mainWindow() { return m_mainWindow; }

    /// What the desktop's menu bar shows; all key equivalents are there.
    menus::MenuModel& menu() { return m_menu; }
    QVariantList contextEntries() const;

    /// The same, with what brings the window back.
    menus::MenuModel& trayMenu() { return m_trayMenu; }

Q_SIGNALS:
    void showSplashChanged();
    void contextEntriesChanged();

private:
    void endSplash();
    void startUp();
    void setUpWindow();
    void playStartupPlaylist();
    void buildMenus();
    menus::Entry playlistMenu();
    menus::Entry playbackMenu();
    menus::Entry fontMenu();
    void later(dispatch::Duration delay, void (TarnwickApp::*task)());

    const Parts m_parts;
    dispatch::Dispatcher& m_dispatcher;
    Settings m_settings;
    BackgroundManager m_backgroundManager;
    MainWindow m_mainWindow;
    windows::Window* m_preferencesWindow = nullptr;
    QStringList m_playlistNames;
    bool m_showSplash = true;
    bool m_fillsPlaylistMenu = false;
    ScenePhase m_scenePhase = ScenePhase::Active;
    menus::MenuModel m_menu;
    menus::MenuModel m_contextMenu;
    menus::MenuModel m_trayMenu;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace tarnwick
