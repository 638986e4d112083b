#include "players/demo/DemoMusic.h"

#include "platform/dispatch/VirtualDispatcher.h"
#include "platform/images/ImageStore.h"
#include "script/run/Interpreter.h"
#include "tests/fakes/MusicProbe.h"
#include "tests/fakes/QuietHost.h"

#include <QFile>
#include <QFileInfo>
#include <gmock/gmock.h>

namespace tarnwick::players {
namespace {

using namespace std::chrono_literals;

struct DemoMusicTest : testing::Test {
    dispatch::VirtualDispatcher dispatcher;
    images::ImageStore images{dispatcher};
    std::unique_ptr<DemoMusic> music;
    std::unique_ptr<MusicProbe> probe;

    void start(const DemoMusic::Options& options) {
        probe.reset();
        music = std::make_unique<DemoMusic>(options, dispatcher, images);
        probe = std::make_unique<MusicProbe>(*music);
        dispatcher.runUntilIdle();
    }
    /// The reply as text, or the error.
    QString run(const QString& body) {
        script::Interpreter interpreter(music->scripting());
        fakes::QuietHost host;
        const auto outcome = interpreter.run("tell application \"Music\"\n" + body + "\nend tell", host);
        dispatcher.runUntilIdle();
        if (outcome.error)
            return QString::number(outcome.error->number);
        return outcome.reply->text().value_or(QString::number(outcome.reply->numberOfItems()));
    }
};

TEST_F(DemoMusicTest, BeginsWithItsScene) {
    struct Row {
        DemoScene scene;
        const char* state;
        const char* album;
        int playlists;
        bool hasCover;
    };
    for (const Row& row : {Row{DemoScene::Playing, "playing", "Lontano", 6, true},
                           Row{DemoScene::Paused, "paused", "Lontano", 6, true},
                           Row{DemoScene::Stopped, "stopped", "", 6, false},
                           Row{DemoScene::TwoDiscs, "playing", "Lontano", 6, true},
                           Row{DemoScene::Cassette, "playing", "Nastro del sabato", 6, true},
                           Row{DemoScene::NoCover, "playing", "Sin título (cinta de garaje)", 6, false},
                           Row{DemoScene::NoPlaylists, "playing", "Lontano", 0, true},
                           Row{DemoScene::ManyPlaylists, "playing", "Lontano", 67, true}}) {
        start({.scene = row.scene});
        EXPECT_EQ(probe->state(), row.state);
        EXPECT_EQ(probe->album(), QString::fromUtf8(row.album));
        EXPECT_EQ(probe->playlists().size(), row.playlists);
        EXPECT_EQ(!probe->cover().isEmpty(), row.hasCover) << row.album;
    }
    EXPECT_EQ(demoSceneNamed("two-discs"), DemoScene::TwoDiscs);
    EXPECT_EQ(demoSceneNamed("Two-Discs"), std::nullopt);
}

TEST_F(DemoMusicTest, TheCassetteLiesInTheTracksFolder) {
    start({.scene = DemoScene::Cassette});
    const QString folder = QFileInfo(probe->fact(terms::Location).asPath()).path();
    EXPECT_FALSE(QImage(folder + "/cassette.png").isNull());
}

TEST_F(DemoMusicTest, PlaysOnByItself) {
    start({.scene = DemoScene::Playing});
    const QString first = probe->title();
    const double left = probe->real(terms::Duration) - probe->position();
    dispatcher.advance(std::chrono::milliseconds(static_cast<int>(left * 1000) - 100));
    EXPECT_EQ(probe->title(), first);
    dispatcher.advance(200ms);
    EXPECT_EQ(probe->title(), "Più piano");
    EXPECT_NEAR(probe->position(), 0.1, 0.05);
    run("pause");
    dispatcher.advance(1h);
    EXPECT_EQ(probe->title(), "Più piano");
}

TEST_F(DemoMusicTest, ObeysScripts) {
    start({.startsStopped = true});
    EXPECT_EQ(run("return player state as text"), "stopped");
    EXPECT_EQ(run("return name of current track"), "-1728");
    run("play");
    EXPECT_EQ(run("return name of current track"), "Le luci lontane del porto");
    run("next track");
    EXPECT_EQ(run("return name of current track"), "Più piano");
    run("previous track");
    EXPECT_EQ(run("set sound volume to 42\nreturn sound volume"), "42");
    EXPECT_EQ(run("set shuffle enabled to not shuffle enabled\nreturn shuffle enabled"), "true");
    run("play (first track of library playlist 1 whose name is \"Diagonale \\\"lenta\\\"\" and album is "
        "\"quadri\")");
    EXPECT_EQ(run("return name of current track"), "Diagonale \"lenta\"");
    run("play playlist \"musica\"");
    EXPECT_EQ(run("return name of container of current track"), "Musica");
    EXPECT_EQ(run("play playlist \"there is none\""), "-1728");
    EXPECT_EQ(run("set name of current track to \"x\""), "-10006");
    run("stop");
    EXPECT_EQ(run("return player position"), "0.0");
}

TEST_F(DemoMusicTest, EqualRunsGiveEqualCovers) {
    start({.scene = DemoScene::LongTexts});
    const QByteArray cover = probe->cover();
    EXPECT_GT(probe->title().size(), 150);
    start({.scene = DemoScene::LongTexts});
    EXPECT_EQ(probe->cover(), cover);
    EXPECT_EQ(QImage::fromData(cover).width(), 1600);
}

TEST_F(DemoMusicTest, AnnouncesWhatChanged) {
    start({.scene = DemoScene::Playing});
    probe->takeChanges();
    run("set sound volume to 10");
    EXPECT_EQ(probe->takeChanges(), Changes(Change::Volume));
    run("next track");
    EXPECT_TRUE(probe->takeChanges().testFlag(Change::Track));
    run("pause");
    EXPECT_TRUE(probe->takeChanges().testFlag(Change::State));
}

} // namespace
} // namespace tarnwick::players
