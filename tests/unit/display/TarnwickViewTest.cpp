#include "display/state/TarnwickView.h"

#include "platform/windows/KeyCodes.h"
#include "tests/unit/display/DisplayFixture.h"

#include <QSignalSpy>

using namespace std::chrono_literals;
using testing::Contains;

namespace tarnwick {
namespace {

class TarnwickViewTest : public DisplayFixture {
protected:
    /// The first album plays, and everything that its coming set off has ended.
    void settleOn(const char* name) {
        play(album(name));
        dispatcher.advance(5s);
        sent.clear();
    }
};

TEST_F(TarnwickViewTest, AppearingAsksForEverythingAndKeepsTheDisplayAwake) {
    answer(scripts::nowPlaying(), album("Lontano"));
    view->appear();
    EXPECT_EQ(view->currentTime(), u"21:47");
    dispatcher.runUntilIdle();
    for (const QString& script : {scripts::nowPlaying(), scripts::currentPlaylist(), scripts::getShuffle()})
        EXPECT_THAT(sent, Contains(script));
    EXPECT_EQ(power.held, 1);
    EXPECT_EQ(power.reason, u"TarnwickView preventing screen sleep");
    EXPECT_EQ(view->currentTime(), u"21:47") << "the first tick comes after a second";
    dispatcher.advance(1s);
    EXPECT_EQ(view->currentTime(), u"21:47:06");
    view->disappear();
    EXPECT_EQ(power.held, 0);
    dispatcher.advance(54s);
    EXPECT_EQ(view->currentTime(), u"21:48:00") << "the clock goes on";
    EXPECT_EQ(view->formattedNow("dd MMM yyyy"), u"22 nov 2026");
}

TEST_F(TarnwickViewTest, AnAlbumSpinsTheCoverAndSendsTheRecordAwayAndBack) {
    settleOn("Uno");
    QList<std::pair<QString, int>> changes; // what changed, and inside an animation of how many milliseconds
    const auto note = [&](const char* what) { changes.append({what, view->transaction().duration()}); };
    QObject::connect(view.get(), &TarnwickView::rotationAngleChanged, [&] { note("spin"); });
    QObject::connect(view.get(), &TarnwickView::isCDVisibleChanged,
                     [&] { note(view->isCDVisible() ? "back" : "away"); });
    QObject::connect(source.get(), &MusicSource::previousAlbumTitleChanged, [&] { note("written back"); });
    const double angle = view->rotationAngle();
    play(album("Due"));
    EXPECT_EQ(view->rotationAngle(), angle + 360);
    EXPECT_FALSE(view->isCDVisible());
    dispatcher.advance(499ms);
    EXPECT_EQ(source->previousAlbumTitle(), "Uno");
    dispatcher.advance(200ms);
    EXPECT_EQ(source->previousAlbumTitle(), "Due");
    EXPECT_FALSE(view->isCDVisible());
    dispatcher.advance(1ms);
    EXPECT_TRUE(view->isCDVisible());
    EXPECT_THAT(changes, testing::ElementsAre(std::pair("spin", 1000), std::pair("away", 700),
                                              std::pair("written back", 0), std::pair("back", 700)));
    EXPECT_EQ(sentCount(scripts::trackLocation()), 1) << "one choice of the record";
}

TEST_F(TarnwickViewTest, AnotherTitleOfTheAlbumMovesNothing) {
    settleOn("Uno");
    const double angle = view->rotationAngle();
    QSignalSpy moved(view.get(), &TarnwickView::isCDVisibleChanged);
    play(album("Uno", "Un'altra"));
    dispatcher.advance(3s);
    EXPECT_EQ(view->rotationAngle(), angle);
    EXPECT_EQ(moved.count(), 0);
    EXPECT_EQ(sentCount(scripts::trackLocation()), 0);
}

TEST_F(TarnwickViewTest, ATitleWithinHalfASecondStillSeesTheAlbumBefore) {
    settleOn("Uno");
    const double angle = view->rotationAngle();
    play(album("Due"));
    dispatcher.advance(400ms);
    play(album("Due", "Un'altra"));
    EXPECT_EQ(view->rotationAngle(), angle + 720);
    dispatcher.advance(5s);
    EXPECT_TRUE(view->isCDVisible());
}

TEST_F(TarnwickViewTest, WithoutTheSlideTheRecordStaysAndTheListIsRebuiltOnce) {
    settings.setEnableCDAnimation(false);
    settings.setEnableFlip(false);
    settleOn("Uno");
    const int key = view->tracklistUpdateKey();
    QSignalSpy moved(view.get(), &TarnwickView::isCDVisibleChanged);
    QSignalSpy spun(view.get(), &TarnwickView::rotationAngleChanged);
    play(album("Due"));
    EXPECT_EQ(view->tracklistUpdateKey(), key + 1);
    EXPECT_EQ(sentCount(scripts::tracksByDisc()), 1);
    EXPECT_EQ(moved.count() + spun.count(), 0);
}

TEST_F(TarnwickViewTest, ARandomStyleAndRandomFontsAreDrawnAtEachTrack) {
    int drawn = 0;
    TarnwickView::Parts with = parts();
    with.randomClockFontName = [&] { return QStringLiteral("Clock-%1").arg(++drawn); };
    with.randomTrackInfoFontName = [&] { return QStringLiteral("Track-%1").arg(++drawn); };
    view = std::make_unique<TarnwickView>(with);
    settings.setBackgroundOption(BackgroundOption::Random);
    settings.setRandomTrackInfoFontEnabled(true);
    QList<BackgroundOption> styles;
    for (int track = 0; track < 20; ++track) {
        play(album("Uno", QByteArray::number(track).constData()));
        ASSERT_TRUE(background.lastRandomChoice);
        styles.append(*background.lastRandomChoice);
    }
    EXPECT_GT(QSet<BackgroundOption>(styles.begin(), styles.end()).size(), 3);
    EXPECT_EQ(settings.selectedTrackInfoFont(), u"Track-20");
    EXPECT_EQ(settings.selectedClockFont(), u"System Font") << "that switch is off";
}

TEST_F(TarnwickViewTest, TheDockIconFollowsTheCoverWhileItIsWanted) {
    QList<std::optional<images::Image>> icons;
    TarnwickView::Parts with = parts();
    with.applyDockIcon = [&](const auto& cover, bool) { icons.append(cover); };
    view = std::make_unique<TarnwickView>(with);
    play(album("Uno"));
    EXPECT_TRUE(icons.isEmpty());
    settings.setAutoUpdateAppIcon(true); // sends the notification
    EXPECT_THAT(icons, testing::ElementsAre(source->currentAlbumArtwork()));
    play(nowPlaying({{3, text("Due")}, {11, D::data(png(8))}}));
    EXPECT_EQ(icons.last(), source->currentAlbumArtwork());
    EXPECT_GE(icons.size(), 2);
}

TEST_F(TarnwickViewTest, TheDiscFollowsPlayingAndThePreference) {
    settleOn("Uno");
    RotatingCDManager& disc = view->rotatingCDManager();
    EXPECT_TRUE(disc.isPlaying());
    EXPECT_FALSE(disc.rotateCDDuringPlayback());
    settings.setRotateCDDuringPlayback(true);
    EXPECT_TRUE(disc.rotateCDDuringPlayback());
    play(nowPlaying({{3, text("Uno")}, {12, text("paused")}}));
    EXPECT_FALSE(disc.isPlaying());
}

TEST_F(TarnwickViewTest, FullScreenIsWhatTheWindowIsWhateverItsSize) {
    EXPECT_FALSE(view->isWindowFullScreen()) << "no window at all";
    windows::FakeWindow& window = windows.addWindow();
    window.toggleFullScreen();
    EXPECT_TRUE(view->isWindowFullScreen());
    view->setWindowSize({1920, 1080});
    EXPECT_TRUE(view->isFullscreen());
    view->onKeyDown(windows::EscapeKey);
    EXPECT_FALSE(window.isFullScreen());
    view->appear();
    for (const bool expected : {true, false, true}) { // a maximised window keeps its size
        window.toggleFullScreen();
        EXPECT_EQ(view->isFullscreen(), expected);
    }
}

TEST_F(TarnwickViewTest, TheCoverTurnsBackWhenThereIsNothingToList) {
    play(album("Uno"));
    view->tapCover();
    play(D::missing());
    ASSERT_FALSE(source->isPlayerActive());
    dispatcher.advance(9900ms);
    EXPECT_TRUE(view->isFlipped());
    play(album("Due"));
    dispatcher.advance(20s);
    EXPECT_TRUE(view->isFlipped()) << "music has come again";
    play(D::missing());
    dispatcher.advance(10100ms);
    EXPECT_FALSE(view->isFlipped());
}

struct KeyCase {
    const char* name;
    bool flipped;
    std::optional<int> selected;
    int key;
    bool flippedAfter;
    std::optional<int> selectedAfter;
    const char* played;
};

TEST_F(TarnwickViewTest, KeysMoveTheSelectionAndTurnTheCover) {
    using namespace windows;
    const KeyCase cases[] = {
        {"Return shows the list", false, {}, ReturnKey, true, {}, nullptr},
        {"Return hides it", true, {}, ReturnKey, false, {}, nullptr},
        {"Return plays", true, 2, ReturnKey, false, {}, "B1"},
        {"Return on nothing any more", true, 3, ReturnKey, false, {}, nullptr},
        {"Escape hides the list", true, 1, EscapeKey, false, 1, nullptr},
        {"Down begins", true, {}, DownArrowKey, true, 0, nullptr},
        {"Down goes on", true, 1, DownArrowKey, true, 2, nullptr},
        {"Down ends at the last", true, 2, DownArrowKey, true, 2, nullptr},
        {"Down does nothing on the front", false, {}, DownArrowKey, false, {}, nullptr},
        {"Up goes back", true, 2, UpArrowKey, true, 1, nullptr},
        {"Up ends at the first", true, 0, UpArrowKey, true, 0, nullptr},
        {"Up without a selection", true, {}, UpArrowKey, true, {}, nullptr},
        {"another key", true, 1, LeftArrowKey, true, 1, nullptr},
    };
    for (const KeyCase& row : cases) {
        SCOPED_TRACE(row.name);
        view = std::make_unique<TarnwickView>(parts());
        settleOn("Uno");
        list(discs({{"A1", "A2"}, {"B1"}}));
        if (row.flipped)
            view->tapCover();
        for (int down = 0; row.selected && down <= *row.selected; ++down)
            view->onKeyDown(DownArrowKey);
        if (row.selected == 3)
            list(discs({{"A1"}})); // shorter than it was
        sent.clear();
        view->onKeyDown(row.key);
        dispatcher.runUntilIdle();
        EXPECT_EQ(view->isFlipped(), row.flippedAfter);
        EXPECT_EQ(view->selectedTrackIndex(), row.selectedAfter);
        QStringList played = sent;
        played.erase(std::remove_if(played.begin(), played.end(),
                                    [](const QString& text) { return !text.contains("play (first track"); }),
                     played.end());
        EXPECT_EQ(played, row.played ? QStringList(scripts::playTitle(QString::fromUtf8(row.played), "Uno"))
                                     : QStringList());
    }
}

TEST_F(TarnwickViewTest, TheColoursStayWhileACoverMayStillComeAndWhenTheMusicEnds) {
    settings.setBackgroundOption(BackgroundOption::OneColor);
    const auto colours = [&](const D& cover, const char* name) {
        play(nowPlaying({{1, text(name)}, {3, text(name)}, {11, cover}}));
        dispatcher.runUntilIdle();
        return view->paintedColors();
    };
    const auto cover = [](const QColor& color) { return D::data(encoded(plainPicture(color))); };
    const auto red = colours(cover(Qt::red), "Uno");
    EXPECT_EQ(colours(D::missing(), "Due"), red) << "it may be on its way";
    dispatcher.advance(2900ms);
    EXPECT_EQ(view->paintedColors(), red);
    const auto blue = colours(cover(Qt::blue), "Due");
    EXPECT_NE(blue, red) << "there it is";
    EXPECT_EQ(colours(D::missing(), "Tre"), blue);
    dispatcher.advance(3s);
    EXPECT_NE(view->paintedColors(), blue) << "there is none";
    EXPECT_EQ(colours(cover(Qt::red), "Uno"), red);
    answer(scripts::nowPlaying(), [] { return failure(); });
    source->fetchNowPlaying();
    dispatcher.advance(5s);
    EXPECT_EQ(view->paintedColors(), red) << "until the logo lies over them";
    EXPECT_EQ(colours(cover(Qt::blue), "Due"), blue);
}

TEST_F(TarnwickViewTest, TurningTheCoverAsksForTheTracks) {
    settleOn("Uno");
    const std::function<void()> turns[] = {[&] { view->onKeyDown(windows::ReturnKey); },
                                           [&] { view->tapCover(); }};
    for (const auto& turn : turns) {
        sent.clear();
        turn();
        dispatcher.runUntilIdle();
        EXPECT_TRUE(view->isFlipped());
        EXPECT_EQ(sentCount(scripts::tracksByDisc()), 1);
        view->hoverTrack(1, 0);
        EXPECT_EQ(view->hoveredTrack(1), 0);
        turn();
        dispatcher.runUntilIdle();
        EXPECT_FALSE(view->isFlipped());
        EXPECT_EQ(sentCount(scripts::tracksByDisc()), 1);
        EXPECT_EQ(view->hoveredTrack(1), -1) << "the pointer is over no row any more";
    }
}

} // namespace
} // namespace tarnwick
