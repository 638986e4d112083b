#include "app/program/TarnwickApp.h"

#include "app/program/KeyTable.h"

namespace tarnwick {

using menus::Entry;

namespace {

QVariantList asVariants(const menus::MenuModel& model, int number) {
    QVariantList all;
    for (const int inside : model.numbersIn(number)) {
        const Entry& entry = *model.entry(inside);
        all.append(QVariantMap{
            {QStringLiteral("number"), inside},
            {QStringLiteral("title"), entry.title},
            {QStringLiteral("shortcut"), entry.shortcut.toString(QKeySequence::NativeText)},
            {QStringLiteral("isMenu"), entry.isMenu},
            {QStringLiteral("isSeparator"), entry.isSeparator},
            {QStringLiteral("entries"), asVariants(model, inside)},
        });
    }
    return all;
}

} // namespace

TarnwickApp::TarnwickApp(Parts parts)
    : m_parts(std::move(parts)), m_dispatcher(m_parts.settings.dispatcher), m_settings(m_parts.settings),
      m_backgroundManager(m_dispatcher),
      m_mainWindow({m_parts.settings.windows, m_parts.settings.defaults, m_settings, m_parts.canComeBack}) {
    buildMenus();
    for (const menus::MenuModel* model : {&m_menu, &m_trayMenu})
        connect(model, &menus::MenuModel::aboutToShow, this, &TarnwickApp::refreshMenus);
}

TarnwickApp::~TarnwickApp() = default;

void TarnwickApp::splashAppeared() { later(splashTime, &TarnwickApp::endSplash); }

void TarnwickApp::endSplash() {
    m_showSplash = false;
    Q_EMIT showSplashChanged();
    startUp();
}

void TarnwickApp::startUp() {
    later({}, &TarnwickApp::setUpWindow);
    if (!m_parts.isFirstCopy())
        return;
    if (m_settings.launchAtLogin()) {
        if (LaunchAgentManager* agent = m_parts.settings.launchAgent)
            agent->installLaunchAgent(); // or repairs it
        later(startupPlaylistDelay, &TarnwickApp::playStartupPlaylist);
    }
    m_fillsPlaylistMenu = true;
    refreshMenus();
}

void TarnwickApp::setUpWindow() { m_mainWindow.setUp(); }

void TarnwickApp::playStartupPlaylist() { m_parts.musicSource.playStartupPlaylist(); }

void TarnwickApp::refreshMenus() {
    if (!m_fillsPlaylistMenu)
        return;
    const QStringList names = m_parts.musicSource.fetchPlaylists();
    if (names == m_playlistNames)
        return;
    m_playlistNames = names;
    buildMenus();
}

void TarnwickApp::setScenePhase(ScenePhase phase) {
    if (phase == m_scenePhase)
        return;
    m_scenePhase = phase;
    if (phase != ScenePhase::Active && m_parts.settings.launchAgent)
        m_parts.settings.launchAgent->deactivateLaunchAgent();
}

void TarnwickApp::openPreferences() {
    if (!m_preferencesWindow) {
        m_preferencesWindow = m_parts.makePreferencesWindow ? m_parts.makePreferencesWindow() : nullptr;
        if (!m_preferencesWindow)
            return;
        const auto forget = [this] { m_preferencesWindow = nullptr; };
        connect(m_preferencesWindow, &windows::Window::willClose, this, forget);
        connect(m_preferencesWindow, &QObject::destroyed, this, forget);
    }
    m_preferencesWindow->orderFront();
}

void TarnwickApp::closeWindow() {
    if (windows::Window* window = m_parts.settings.windows.firstWindow())
        m_mainWindow.askToClose(*window);
}

void TarnwickApp::minimizeWindow() {
    if (windows::Window* window = m_parts.settings.windows.firstWindow())
        window->miniaturize();
}

void TarnwickApp::toggleFullScreen() {
    if (windows::Window* window = m_parts.settings.windows.firstWindow())
        window->toggleFullScreen();
}

void TarnwickApp::buildMenus() {
    const Entry preferences = Entry::command(
        QStringLiteral("Preferences"), [this] { openPreferences(); }, Qt::CTRL | Qt::Key_Comma);
    const Entry quit = Entry::command(QStringLiteral("Quit"), m_parts.quit, Qt::CTRL | Qt::Key_Q);
    const QList<Entry> common{playlistMenu(), playbackMenu(), fontMenu()};
    Entry fullScreen = Entry::command(
        QStringLiteral("Full Screen"), [this] { toggleFullScreen(); }, Qt::Key_F11);
    Entry close = Entry::command(
        QStringLiteral("Close Window"), [this] { closeWindow(); }, Qt::CTRL | Qt::Key_W);
    fullScreen.isOfWindow = close.isOfWindow = true;
    const Entry own = Entry::menu(QStringLiteral("Tarnwick"), {preferences, Entry::separator(), fullScreen,
                                                               close, Entry::separator(), quit});
    const Entry show = Entry::command(QStringLiteral("Show"), [this] { m_mainWindow.show(); });
    m_menu.setEntries(QList<Entry>{own} + common);
    m_contextMenu.setEntries(common + QList<Entry>{Entry::separator()} + own.entries);
    m_trayMenu.setEntries(QList<Entry>{show, Entry::separator()} + common +
                          QList<Entry>{preferences, Entry::separator(), quit});
    Q_EMIT contextEntriesChanged();
}

QVariantList TarnwickApp::keyTable() const { return tarnwick::keyTable(m_menu); }

QVariantList TarnwickApp::contextEntries() const { return asVariants(m_contextMenu, 0); }

Entry TarnwickApp::playlistMenu() {
    MusicSource& music = m_parts.musicSource;
    QList<Entry> entries;
    for (const QString& name : m_playlistNames)
        entries.append(Entry::command(name, [&music, name] { music.playPlaylist(name); }));
    return Entry::menu(QStringLiteral("Playlist"), entries);
}

Entry TarnwickApp::playbackMenu() {
    MusicSource& music = m_parts.musicSource;
    return Entry::menu(
        QStringLiteral("Playback"),
        {Entry::command(
             QStringLiteral("Play/Pause"), [&music] { music.playPause(); }, Qt::CTRL | Qt::SHIFT | Qt::Key_P),
         Entry::command(
             QStringLiteral("Next Track"), [&music] { music.nextTrack(); }, Qt::Key_Right),
         Entry::command(
             QStringLiteral("Previous Track"), [&music] { music.previousTrack(); }, Qt::Key_Left),
         Entry::command(
             QStringLiteral("Toggle Shuffle"), [&music] { music.toggleShuffle(); }, Qt::CTRL | Qt::Key_S)});
}

Entry TarnwickApp::fontMenu() {
    return Entry::menu(
        QStringLiteral("Font"),
        {Entry::command(QStringLiteral("Import Clock Font"), [this] { m_parts.importFonts(true); }),
         Entry::command(QStringLiteral("Import Track Info Font"), [this] { m_parts.importFonts(false); })});
}

void TarnwickApp::later(dispatch::Duration delay, void (TarnwickApp::*task)()) {
    const auto run = [this, alive = std::weak_ptr(m_alive), task] {
        if (!alive.expired())
            (this->*task)();
    };
    if (delay == dispatch::Duration::zero())
        m_dispatcher.mainQueue().async(run);
    else
        m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), delay, run);
}

} // namespace tarnwick
