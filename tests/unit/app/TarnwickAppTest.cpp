#include "app/program/TarnwickApp.h"

#include "music/Scripts.h"
#include "platform/defaults/MemoryDefaults.h"
#include "tests/fakes/FakeLaunchctl.h"
#include "tests/fakes/FakeWindows.h"
#include "tests/unit/music/MusicFixture.h"

#include <QTemporaryDir>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

class TarnwickAppTest : public MusicFixture {
protected:
    TarnwickAppTest() { answer(scripts::playlistNames(), texts({"Musica", "Per la sera"})); }

    TarnwickApp& make() {
        app.reset();
        app = std::make_unique<TarnwickApp>(TarnwickApp::Parts{
            .settings =
                {.dispatcher = dispatcher, .defaults = defaults, .windows = windows, .launchAgent = &agent},
            .musicSource = *source,
            .isFirstCopy = [this] { return isFirstCopy; },
            .canComeBack = [] { return true; },
            .makePreferencesWindow =
                [this] {
                    ++preferencesMade;
                    return &preferences;
                },
            .importFonts = [this](bool forClock) { imports.append(forClock ? "clock" : "track"); },
            .quit = [this] { ++quits; }});
        return *app;
    }

    /// From the splash to a second after the display is there.
    TarnwickApp& start() {
        make().splashAppeared();
        dispatcher.advance(3s);
        return *app;
    }

    /// The titles in a menu, with what stands in its menus in brackets.
    static QStringList titles(const QList<menus::Entry>& entries) {
        QStringList all;
        for (const menus::Entry& entry : entries) {
            all.append(entry.isSeparator ? QStringLiteral("-") : entry.title);
            if (entry.isMenu)
                all.last() += u'[' + titles(entry.entries).join(u',') + u']';
        }
        return all;
    }

    /// Triggers the command with this title, wherever it stands.
    static void choose(menus::MenuModel& model, const QString& title) {
        for (int number = 1; const auto* entry = model.entry(number); ++number)
            if (entry->title == title)
                return model.trigger(number);
        FAIL() << qPrintable(title);
    }

    QTemporaryDir folder;
    defaults::MemoryDefaults defaults;
    windows::FakeWindows windows;
    windows::FakeWindow preferences;
    FakeLaunchctl launchctl;
    LaunchAgentManager agent{{folder.path(), "org.tarnwick.Tarnwick", "/usr/bin/tarnwick", launchctl, nullptr,
                              [](const auto&) {}}};
    QStringList imports;
    bool isFirstCopy = true;
    int preferencesMade = 0;
    int quits = 0;
    std::unique_ptr<TarnwickApp> app;
};

TEST_F(TarnwickAppTest, TheSplashIsShownForTwoSeconds) {
    windows::FakeWindow& window = windows.addWindow();
    TarnwickApp& made = make();
    made.splashAppeared();
    dispatcher.advance(1999ms);
    EXPECT_TRUE(made.showSplash());
    EXPECT_EQ(window.timesOrderedFront(), 0);
    dispatcher.advance(1ms);
    EXPECT_FALSE(made.showSplash());
    EXPECT_EQ(window.timesOrderedFront(), 1) << "the window is set up with the display";
}

TEST_F(TarnwickAppTest, AStartAtLoginInstallsTheAgentAndPlaysThePlaylist) {
    defaults.set("launchAtLogin", true);
    make().splashAppeared();
    dispatcher.advance(2s);
    EXPECT_THAT(launchctl.commands, ElementsAre("bootstrap"));
    EXPECT_FALSE(sent.contains(scripts::startupPlaylist()));
    dispatcher.advance(1999ms);
    EXPECT_FALSE(sent.contains(scripts::startupPlaylist()));
    dispatcher.advance(1ms);
    EXPECT_TRUE(sent.contains(scripts::startupPlaylist()));

    start();
    EXPECT_THAT(launchctl.commands, ElementsAre("bootstrap")) << "the agent is there";
    launchctl.registered = false;
    start();
    EXPECT_THAT(launchctl.commands, ElementsAre("bootstrap", "bootstrap")) << "its registration is not";
}

TEST_F(TarnwickAppTest, WithoutStartAtLoginNothingIsInstalledOrPlayed) {
    start();
    dispatcher.advance(10s);
    EXPECT_THAT(launchctl.commands, IsEmpty());
    EXPECT_FALSE(sent.contains(scripts::startupPlaylist()));
    EXPECT_THAT(app->playlistNames(), ElementsAre("Musica", "Per la sera"));
}

TEST_F(TarnwickAppTest, ASecondCopyLeavesAllThatToTheFirst) {
    defaults.set("launchAtLogin", true);
    isFirstCopy = false;
    windows::FakeWindow& window = windows.addWindow();
    start();
    dispatcher.advance(10s);
    EXPECT_EQ(window.timesOrderedFront(), 1) << "its window is set up all the same";
    EXPECT_THAT(launchctl.commands, IsEmpty());
    EXPECT_FALSE(sent.contains(scripts::startupPlaylist()));
    app->refreshMenus();
    EXPECT_THAT(app->playlistNames(), IsEmpty());
}

TEST_F(TarnwickAppTest, MenusHaveTheirEntriesAndKeys) {
    start();
    EXPECT_THAT(titles(app->menu().entries()),
                ElementsAre("Tarnwick[Preferences,-,Full Screen,Close Window,-,Quit]",
                            "Playlist[Musica,Per la sera]",
                            "Playback[Play/Pause,Next Track,Previous Track,Toggle Shuffle]",
                            "Font[Import Clock Font,Import Track Info Font]"));
    EXPECT_EQ(titles(app->trayMenu().entries()).first(), "Show");
    EXPECT_EQ(titles(app->trayMenu().entries()).last(), "Quit");
    QMap<QString, QString> keys;
    for (int number = 1; const auto* entry = app->menu().entry(number); ++number)
        if (!entry->shortcut.isEmpty())
            keys.insert(entry->title, entry->shortcut.toString());
    EXPECT_EQ(keys, (QMap<QString, QString>{{"Preferences", "Ctrl+,"},
                                            {"Play/Pause", "Ctrl+Shift+P"},
                                            {"Next Track", "Right"},
                                            {"Previous Track", "Left"},
                                            {"Toggle Shuffle", "Ctrl+S"},
                                            {"Full Screen", "F11"},
                                            {"Close Window", "Ctrl+W"},
                                            {"Quit", "Ctrl+Q"}}));
}

TEST_F(TarnwickAppTest, MenuEntriesDoWhatTheySay) {
    windows::FakeWindow& window = windows.addWindow();
    start();
    const std::pair<const char*, QString> rows[] = {
        {"Play/Pause", scripts::playPause()},
        {"Next Track", scripts::nextTrack()},
        {"Previous Track", scripts::previousTrack()},
        {"Toggle Shuffle", scripts::toggleShuffle()},
        {"Per la sera", scripts::playPlaylist("Per la sera")},
    };
    for (menus::MenuModel* model : {&app->menu(), &app->trayMenu()})
        for (const auto& [title, text] : rows) {
            sent.clear();
            choose(*model, title);
            dispatcher.advance(1s);
            EXPECT_TRUE(sent.contains(text)) << title;
        }
    choose(app->menu(), "Import Clock Font");
    choose(app->menu(), "Import Track Info Font");
    EXPECT_THAT(imports, ElementsAre("clock", "track"));
    choose(app->menu(), "Full Screen");
    EXPECT_TRUE(window.isFullScreen());
    choose(app->menu(), "Close Window");
    EXPECT_FALSE(window.isVisible());
    choose(app->trayMenu(), "Show");
    EXPECT_TRUE(window.isVisible());
    choose(app->trayMenu(), "Quit");
    EXPECT_EQ(quits, 1);
}

TEST_F(TarnwickAppTest, PlaylistsOfAPlayerThatCameLaterAreThereWhenTheMenuOpens) {
    answer(scripts::playlistNames(), texts({}));
    start();
    answer(scripts::playlistNames(), texts({"Domenica"}));
    Q_EMIT app->trayMenu().aboutToShow();
    EXPECT_EQ(app->menu().entries()[1].entries.value(0).title, "Domenica");
}

TEST_F(TarnwickAppTest, ThereIsOnePreferencesWindowUntilItCloses) {
    make();
    app->openPreferences();
    app->openPreferences();
    EXPECT_EQ(preferencesMade, 1);
    EXPECT_EQ(preferences.timesOrderedFront(), 2);
    preferences.close();
    app->openPreferences();
    EXPECT_EQ(preferencesMade, 2);
}

TEST_F(TarnwickAppTest, LeavingTheFrontUnloadsTheAgentAndKeepsItsFile) {
    defaults.set("launchAtLogin", true);
    start();
    launchctl.commands.clear();
    app->setScenePhase(ScenePhase::Inactive);
    app->setScenePhase(ScenePhase::Inactive);
    EXPECT_THAT(launchctl.commands, ElementsAre("unload"));
    app->setScenePhase(ScenePhase::Active);
    app->setScenePhase(ScenePhase::Background);
    EXPECT_THAT(launchctl.commands, ElementsAre("unload", "unload"));
    EXPECT_TRUE(agent.isInstalled());
}

TEST_F(TarnwickAppTest, WhatIsDueAfterItsEndDoesNotHappen) {
    defaults.set("launchAtLogin", true);
    make().splashAppeared();
    dispatcher.advance(2s);
    app.reset();
    dispatcher.advance(10s);
    EXPECT_FALSE(sent.contains(scripts::startupPlaylist()));
}

} // namespace
} // namespace tarnwick
