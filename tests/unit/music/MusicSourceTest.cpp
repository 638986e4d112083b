#include "music/Scripts.h"
#include "tests/unit/music/MusicFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

using MusicSourceTest = MusicFixture;

TEST_F(MusicSourceTest, DecodesEveryItem) {
    play(nowPlaying({{11, D::data(png(8))}}));
    EXPECT_EQ(source->currentTrackTitle(), "Le luci");
    EXPECT_EQ(source->currentArtistName(), "Nevia Corallo");
    EXPECT_EQ(source->currentAlbumName(), "Lontano");
    EXPECT_EQ(source->currentTrackYear(), 2019);
    EXPECT_EQ(source->currentTrackNumber(), 4);
    EXPECT_EQ(source->currentDiscNumber(), 2);
    EXPECT_EQ(source->totalDiscs(), 2);
    EXPECT_EQ(source->currentTrackGroup(), "Notturni");
    EXPECT_EQ(source->currentTrackFormat(), "alac");
    EXPECT_EQ(source->currentTrackComment(), "Italy, Japan");
    EXPECT_EQ(source->currentAlbumArtwork()->size(), QSize(8, 8));
    EXPECT_TRUE(source->isPlaying() && source->isPlayerActive() && !source->isPaused());
    EXPECT_EQ(source->trackDuration(), 318.5);
    EXPECT_EQ(source->elapsedTime(), 161.25);
    EXPECT_THAT(source->trackNames(), ElementsAre("Uno", "Due"));
    EXPECT_THAT(source->trackDurations(), ElementsAre(245.5, 180.0));
    EXPECT_EQ(source->currentGenre(), "Jazz");
    EXPECT_EQ(source->currentBitRate(), 1018);
    EXPECT_EQ(source->currentFileSize(), 38640000);
    EXPECT_EQ(source->currentSampleRate(), 96000);
}

TEST_F(MusicSourceTest, AnAlbumWithoutANameIsAnotherInAnotherFolder) {
    const auto playFrom = [this](const char* title, const char* path) {
        answer(scripts::trackLocation(), text(path));
        play(nowPlaying({{1, text(title)}, {3, text("")}}));
    };
    playFrom("Uno", "/music/one/1.wav");
    list(discs({{"Uno", "Due"}}));
    EXPECT_EQ(source->currentAlbumName(), "");
    const QString identity = source->albumIdentity();
    playFrom("Due", "/music/one/2.wav");
    EXPECT_EQ(source->albumIdentity(), identity);
    EXPECT_TRUE(source->hasTracksOfCurrentAlbum());
    playFrom("Tre", "/music/two/1.wav");
    EXPECT_NE(source->albumIdentity(), identity);
    EXPECT_FALSE(source->hasTracksOfCurrentAlbum()) << "the list is still that of the folder before";
    // Streams have no folder.
    answer(scripts::trackLocation(), [] { return failure(); });
    play(nowPlaying({{2, text("Radio Uno")}, {3, text("")}}));
    const QString station = source->albumIdentity();
    play(nowPlaying({{2, text("Radio Due")}, {3, text("")}}));
    EXPECT_NE(source->albumIdentity(), station);
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(MusicSourceTest, DecodesWhatIsOddAsItShould) {
    const struct {
        const char* what;
        std::map<int, D> items;
        const char* field;
        QVariant value;
    } rows[] = {
        {"a year with a dot", {{4, text("2.001")}}, "currentTrackYear", 2001LL},
        {"no year", {{4, text("0")}}, "currentTrackYear", 0LL},
        {"a year in words", {{4, text("MMXIX")}}, "currentTrackYear", QVariant::fromValue(nullptr)},
        {"one disc", {{7, D::integer(1)}}, "totalDiscs", QVariant::fromValue(nullptr)},
        {"three discs", {{7, text("3")}}, "totalDiscs", 3LL},
        {"an unreadable disc count", {{7, D::missing()}}, "totalDiscs", QVariant::fromValue(nullptr)},
        {"an unreadable track number", {{5, text("4/9")}}, "currentTrackNumber", 4LL},
        {"no title", {{1, D::missing()}}, "currentTrackTitle", "Titolo sconosciuto"},
        {"no kind", {{9, D::missing()}}, "currentTrackFormat", "unknown"},
        {"a genre that is a list", {{17, D::list({})}}, "currentGenre", "Genere sconosciuto"},
    };
    for (const auto& row : rows) {
        play(nowPlaying());
        play(nowPlaying(row.items));
        EXPECT_EQ(source->property(row.field), row.value) << row.what;
    }
}

TEST_F(MusicSourceTest, PicturesThatAreNoneAreNocover) {
    for (const D& artwork :
         std::initializer_list<D>{D::missing(), D::data("no picture"), D::data({}), text("x")}) {
        play(nowPlaying({{11, artwork}}));
        EXPECT_EQ(source->currentAlbumArtwork(), noCover);
    }
}

TEST_F(MusicSourceTest, StoppedReadsNothingElseAndClears) {
    for (const D& stopped :
         {nowPlaying({{12, text("stopped")}, {1, text("leftover")}}), text("no list"), D()}) {
        play(nowPlaying({{11, D::data(png(8))}}));
        answer(scripts::currentPlaylist(), text("Sere"));
        source->fetchCurrentPlaylistName();
        play(stopped);
        EXPECT_EQ(source->currentTrackTitle(), "");
        EXPECT_EQ(source->currentAlbumName(), "") << "empty, not none";
        EXPECT_EQ(source->currentAlbumArtwork(), std::nullopt);
        EXPECT_EQ(source->currentPlaylistName(), "");
        EXPECT_EQ(source->currentTrackFormat(), "");
        EXPECT_EQ(source->totalDiscs(), 2) << "kept";
        EXPECT_FALSE(source->isPlayerActive());
    }
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(MusicSourceTest, FailureClearsAndSaysSoOnce) {
    play(nowPlaying());
    answer(scripts::nowPlaying(), [] { return failure(); });
    source->startUpdating();
    dispatcher.advance(11s);
    EXPECT_EQ(source->currentTrackTitle(), "");
    EXPECT_EQ(lines.count(QStringLiteral("Errore AppleScript: no (-600)")), 1) << "the same line is no news";
    EXPECT_TRUE(lines.contains(QStringLiteral("Errore: impossibile eseguire AppleScript.")));
}

TEST_F(MusicSourceTest, EqualPollWakesNoWatcherAndDecodesNothing) {
    const QByteArray cover = png(32);
    play(nowPlaying({{11, D::data(cover)}}));
    int woken = 0;
    source->changes().watch([&] { return source->currentAlbumArtwork(); }, [&](auto&, auto&) { ++woken; });
    source->changes().watch([&] { return source->currentTrackTitle(); }, [&](auto&, auto&) { ++woken; });
    const int decoded = store->decodeCount();
    play(nowPlaying({{11, D::data(cover)}}));
    play(nowPlaying({{11, D::data(QByteArray(cover.constData(), cover.size()))}}));
    EXPECT_EQ(woken, 0);
    EXPECT_EQ(store->decodeCount(), decoded);
}

TEST_F(MusicSourceTest, PollsOnItsIntervals) {
    answer(scripts::nowPlaying(), nowPlaying());
    source->startUpdating();
    source->startUpdating(); // replaces: two generations never run side by side
    dispatcher.advance(30s);
    EXPECT_EQ(sentCount(scripts::nowPlaying()), 7);
    EXPECT_EQ(sentCount(scripts::getShuffle()), 4);
    EXPECT_EQ(sentCount(scripts::getVolume()), 7);
    source.reset();
    dispatcher.advance(30s);
    EXPECT_EQ(sentCount(scripts::nowPlaying()), 7) << "the polls end with the source";
}

TEST_F(MusicSourceTest, PositionGoesOnBetweenPollsWhilePlaying) {
    play(nowPlaying());
    source->startElapsedTimeTimer();
    source->startElapsedTimeTimer();
    dispatcher.advance(3s);
    EXPECT_EQ(source->elapsedTime(), 161.25 + 4) << "the first tick comes at once";
    play(nowPlaying({{14, D::real(170)}}));
    EXPECT_EQ(source->elapsedTime(), 170);
    play(nowPlaying({{12, text("paused")}}));
    dispatcher.advance(3s);
    EXPECT_EQ(source->elapsedTime(), 161.25);
}

TEST_F(MusicSourceTest, TracksByDiscAreSortedAndGrouped) {
    play(nowPlaying());
    const auto track = [](int number, const char* title) {
        return D::list({D::integer(number), text(title)});
    };
    list(D::list({D::list({D::integer(2), D::list({track(1, "B1")})}),
                  D::list({D::integer(1), D::list({track(2, "A2"), track(1, "A1"), track(2, "A2b"),
                                                   D::list({D::integer(9)}), D::missing()})}),
                  D::list({}), text("rubbish")}));
    EXPECT_THAT(source->tracksByDisc(), ElementsAre(DiscTrack{1, {"A1", "A2", "A2b"}}, DiscTrack{2, {"B1"}}));
    list(text("Nessuna traccia, in riproduzione o pausa."));
    EXPECT_THAT(source->currentTrackList(), ElementsAre("Nessuna traccia", "in riproduzione o pausa."));
    EXPECT_THAT(source->tracksByDisc(),
                ElementsAre(DiscTrack{1, {"Nessuna traccia", "in riproduzione o pausa."}}));
    answer(scripts::tracksByDisc(), [] { return failure(-1728); });
    source->fetchTracksByDisc();
    dispatcher.runUntilIdle();
    EXPECT_THAT(lines, ElementsAre("Errore AppleScript: no (-1728)"));
    EXPECT_EQ(source->tracksByDisc().size(), 1) << "unchanged";
}

TEST_F(MusicSourceTest, TracksOfAnotherAlbumAreDropped) {
    play(nowPlaying());
    answer(scripts::tracksByDisc(), [this] {
        answer(scripts::nowPlaying(), nowPlaying({{3, text("Vicino")}}));
        source->fetchNowPlaying(); // overtakes
        return reply(discs({{"old"}}));
    });
    source->fetchTracksByDisc();
    dispatcher.runUntilIdle();
    EXPECT_EQ(source->currentAlbumName(), "Vicino");
    EXPECT_THAT(source->tracksByDisc(), IsEmpty());
    EXPECT_FALSE(source->hasTracksOfCurrentAlbum());
}

} // namespace
} // namespace tarnwick
