#include "music/Scripts.h"
#include "tests/unit/music/MusicFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

class FakeMusic : public players::MusicApplication {
public:
    script::ApplicationProvider& scripting() override { std::abort(); }
    players::Capabilities capabilities() const override { return {}; }
    QString playerName() const override { return {}; }
    void setChangeHandler(ChangeHandler changeHandler) override { handler = std::move(changeHandler); }
    bool waitUntilReady(dispatch::Duration) override { return true; }
    bool waitUntilComplete(dispatch::Duration) override { return true; }
    std::optional<QString> finishCommands(dispatch::Duration) override { return {}; }

    ChangeHandler handler;
};

class MusicCommandsTest : public MusicFixture {
protected:
    void SetUp() override {
        play(nowPlaying());
        sent.clear();
    }
};

TEST_F(MusicCommandsTest, NextAndPreviousRefreshAfterAFifthOfASecond) {
    source->nextTrack();
    source->previousTrack();
    EXPECT_THAT(sent, ElementsAre(scripts::nextTrack(), scripts::previousTrack()));
    dispatcher.advance(199ms);
    EXPECT_EQ(sentCount(scripts::nowPlaying()), 0);
    dispatcher.advance(1ms);
    EXPECT_EQ(sentCount(scripts::nowPlaying()), 2);
    source->nextTrack();
    source.reset();
    dispatcher.advance(1s);
    EXPECT_EQ(sentCount(scripts::nowPlaying()), 2) << "the refresh does not outlive the source";
}

TEST_F(MusicCommandsTest, PlayPauseDoesNotBlockAndFollowsOneAnother) {
    answer(scripts::playPause(), [this] {
        dispatcher.sleepFor(3s); // a player is being started
        return reply(D());
    });
    source->playPause();
    source->playPause();
    EXPECT_THAT(sent, IsEmpty());
    dispatcher.runUntilIdle();
    EXPECT_EQ(sentCount(scripts::playPause()), 2);
    EXPECT_EQ(sentCount(scripts::nowPlaying()), 2);
    EXPECT_EQ(dispatcher.now(), 6s) << "one after the other";
}

TEST_F(MusicCommandsTest, StartupPlaylistReports) {
    source->playStartupPlaylist();
    dispatcher.runUntilIdle();
    answer(scripts::startupPlaylist(), [] { return failure(-1728); });
    source->playStartupPlaylist();
    dispatcher.runUntilIdle();
    EXPECT_THAT(lines,
                ElementsAre("✅ Playlist 'Musica' avviata con successo!", "❌ Errore AppleScript: no (-1728)"));
}

TEST_F(MusicCommandsTest, ShuffleFollowsWhatMusicReports) {
    answer(scripts::toggleShuffle(), D::boolean(true));
    source->toggleShuffle();
    EXPECT_FALSE(source->isShuffleOn()) << "assigned by the main queue";
    dispatcher.runUntilIdle();
    EXPECT_TRUE(source->isShuffleOn());
    answer(scripts::toggleShuffle(), [] { return failure(); });
    source->toggleShuffle();
    dispatcher.runUntilIdle();
    EXPECT_TRUE(source->isShuffleOn());
}

TEST_F(MusicCommandsTest, VolumeKeepsTheCallersFractionUntilTheNextSync) {
    source->setVolume(0.425);
    dispatcher.runUntilIdle();
    EXPECT_EQ(sent.last(), scripts::setVolume(0.425));
    EXPECT_EQ(source->volumeLevel(), 0.425);
    answer(scripts::getVolume(), D::integer(42));
    source->syncVolume();
    dispatcher.runUntilIdle();
    EXPECT_EQ(source->volumeLevel(), 0.42);
    answer(scripts::setVolume(0.9), [] { return failure(); });
    source->setVolume(0.9);
    dispatcher.runUntilIdle();
    EXPECT_EQ(source->volumeLevel(), 0.42);
    EXPECT_THAT(lines, ElementsAre("Errore AppleScript: no (-600)", "Failed to set volume via AppleScript"));
}

TEST_F(MusicCommandsTest, PlayingATitleRefreshesTheListUnlessItFails) {
    const QString title = QStringLiteral(R"(Say "hi" \o/)");
    const QString text = scripts::playTitle(title, QStringLiteral("Lontano"));
    source->playTrack(title);
    dispatcher.runUntilIdle();
    EXPECT_THAT(sent, ElementsAre(text, scripts::tracksByDisc()));
    answer(text, [] { return failure(); });
    source->playTrack(title);
    dispatcher.runUntilIdle();
    EXPECT_EQ(sentCount(scripts::tracksByDisc()), 1);
    EXPECT_THAT(lines, ElementsAre("❌ Errore AppleScript: no (-600)"));
}

TEST_F(MusicCommandsTest, NothingIsPlayedBeforeAnAlbumIsKnown) {
    MusicSource fresh({dispatcher, runner, store, noCover, log});
    fresh.playTrack(QStringLiteral("x"));
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_THAT(lines, ElementsAre("Errore: album non trovato"));
}

TEST_F(MusicCommandsTest, PlaylistsMatchWithoutCaseAndSurroundingSpace) {
    answer(scripts::playlistNames(), texts({"Jazz", "Sere di Settembre", "sere di settembre"}));
    source->playPlaylist(QStringLiteral("  SERE di settembre\n"));
    EXPECT_EQ(source->currentPlaylistName(), "Sere di Settembre") << "the first, as Music spells it";
    EXPECT_EQ(sent.last(), scripts::playPlaylist(QStringLiteral("Sere di Settembre")));
    source->playPlaylist(QStringLiteral("nothing like it"));
    EXPECT_EQ(source->currentPlaylistName(), "Sere di Settembre");
    answer(scripts::playlistNames(), [] { return failure(); });
    EXPECT_THAT(source->fetchPlaylists(), IsEmpty());
}

TEST_F(MusicCommandsTest, AnnouncementsRefreshAtOnceAndAFloodIsOneQuestion) {
    using players::Change;
    FakeMusic music;
    source->follow(music);
    for (int i = 0; i < 1000; ++i)
        music.handler(Change::Position);
    dispatcher.runUntilIdle();
    EXPECT_THAT(sent, ElementsAre(scripts::nowPlaying()));
    const std::pair<players::Changes, QStringList> rows[] = {
        {Change::Volume | Change::Shuffle, {scripts::getShuffle(), scripts::getVolume()}},
        {Change::Track, {scripts::nowPlaying(), scripts::currentPlaylist(), scripts::tracksByDisc()}},
    };
    for (const auto& [changes, asked] : rows) {
        sent.clear();
        music.handler(changes);
        dispatcher.runUntilIdle();
        EXPECT_EQ(sent, asked);
    }
    sent.clear();
    answer(scripts::nowPlaying(), nowPlaying({{12, text("stopped")}}));
    music.handler(Change::Track);
    dispatcher.runUntilIdle();
    EXPECT_EQ(sentCount(scripts::tracksByDisc()), 0) << "nothing plays that could have an album";

    answer(scripts::nowPlaying(), nowPlaying());
    answer(scripts::currentPlaylist(), text("Jazz"));
    music.handler(Change::Playlist);
    dispatcher.runUntilIdle();
    answer(scripts::currentPlaylist(), [] { return failure(); });
    for (const auto& [change, name] : {std::pair(Change::Track, "Jazz"), std::pair(Change::Player, "")}) {
        music.handler(change);
        dispatcher.runUntilIdle();
        EXPECT_EQ(source->currentPlaylistName(), name);
    }
    source.reset();
    EXPECT_FALSE(music.handler) << "a source that goes stops listening";
}

} // namespace
} // namespace tarnwick
