#include "display/panel/PanelItem.h"
#include "display/tracklist/TracklistModel.h"
#include "tests/unit/display/SceneFixture.h"

#include <QFontDatabase>
#include <QTest>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

const QColor coverColour(Qt::darkCyan);

class DisplaySceneTest : public SceneFixture {
protected:
    void show() {
        open();
        advance(4s);
    }
    void showPlaying(const char* state = "playing") {
        answer(scripts::nowPlaying(), playing(state));
        show();
    }

    QImage picture() {
        renderer->render(); // lays out, and so asks for pictures
        return renderer->render();
    }

    void click(QPoint where) {
        QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, where);
        dispatcher.runUntilIdle();
    }

    void expectCurrentRowInView();

    static D playing(const char* state = "playing") {
        return nowPlaying({{11, D::data(png(8))}, {12, text(state)}});
    }
};

TEST_F(DisplaySceneTest, TheRecordGoesBehindTheCoverAndComesBack) {
    showPlaying();
    play(nowPlaying({{1, text("Due")}, {3, text("Due")}, {11, D::data(png(8))}}));
    advance(680ms);
    EXPECT_EQ(picture().pixelColor(850, 300), QColor(Qt::black)) << "away";
    advance(800ms);
    EXPECT_NE(picture().pixelColor(850, 300), QColor(Qt::black));
    EXPECT_EQ(picture().pixelColor(300, 300), coverColour) << "the cover has spun";
}

TEST_F(DisplaySceneTest, ATapTurnsTheCoverAndATapOnARowPlaysIt) {
    answer(scripts::nowPlaying(), playing());
    answer(scripts::tracksByDisc(), discs({{"Uno", "Due"}}));
    show();
    click({300, 300});
    EXPECT_TRUE(view->isFlipped());
    advance(480ms);
    EXPECT_EQ(picture().pixelColor(300, 300), coverColour) << "still the front, just before the edge";
    advance(600ms);
    EXPECT_NE(picture().pixelColor(300, 500), coverColour);
    int durations = 0;
    for (const QQuickItem* item : itemsBelow(renderer->root())) {
        if (item->property("text") == "04:05" && item->isVisible()) {
            ++durations;
            EXPECT_GT(item->width(), 40) << "in cells of its type";
        }
    }
    EXPECT_EQ(durations, 1) << "the other is not known";
    sent.clear();
    // Below the small copy, which is 285 high with 20 above, 20 below, in a list that begins at 15.
    const int firstRow = 15 + 20 + 285 + 20 + 19;
    click({300, firstRow + 38});
    EXPECT_THAT(sent, testing::Contains(scripts::playTitle("Due", "Lontano")));
    EXPECT_TRUE(view->isFlipped()) << "the tap was the row's alone";
    click({300, 560});
    EXPECT_FALSE(view->isFlipped());
}

TEST_F(DisplaySceneTest, ATapBesideTheRowsTurnsTheCoverBackHoweverLongTheList) {
    struct Row {
        const char* where;
        int y;
        std::size_t titles;
    };
    answer(scripts::nowPlaying(), playing());
    settings.setTracklistStyle(TracklistStyle::Dynamic); // whose list has a margin
    show();
    for (const Row& row :
         {Row{"small copy, short list", 180, 2}, Row{"small copy", 180, 30}, Row{"margin", 25, 30},
          Row{"header", 15 + 20 + 325 + 12, 30}, Row{"outside the list", 5, 30}}) {
        SCOPED_TRACE(row.where);
        const Titles titles(row.titles, "Uno");
        answer(scripts::tracksByDisc(), discs({titles, titles}));
        view->tapCover();
        advance(1100ms);
        ASSERT_TRUE(view->isFlipped());
        click({250, row.y});
        EXPECT_FALSE(view->isFlipped());
        advance(1100ms);
    }
}

TEST_F(DisplaySceneTest, TheCurrentRowIsInViewWhenTheCoverIsTurnedOver) {
    answer(scripts::nowPlaying(), playing()); // the fourth of the second disc
    show();
    for (const std::size_t before : {2U, 7U, 8U, 15U, 60U}) {
        SCOPED_TRACE(before);
        answer(scripts::tracksByDisc(),
               discs({Titles(before, "Uno"), {"Uno", "Due", "Tre", "Le luci", "Ancora"}}));
        view->tapCover();
        advance(1100ms);
        expectCurrentRowInView();
        view->tapCover();
        advance(1100ms);
    }
}

void DisplaySceneTest::expectCurrentRowInView() {
    int seen = 0;
    for (const QQuickItem* item : itemsBelow(renderer->root())) {
        if (item->property("isCurrent").toBool() && item->isVisible() &&
            item->property("padding").isValid()) {
            ++seen;
            const QRectF place = item->mapRectToScene(item->boundingRect());
            EXPECT_TRUE(QRectF(0, 0, 600, 600).contains(place)) << place.y();
        }
    }
    EXPECT_EQ(seen, 1);
}

TEST_F(DisplaySceneTest, ADurationThatComesLateIsShown) {
    answer(scripts::nowPlaying(), nowPlaying({{13, D::real(0)}}));
    show();
    const auto shown = [this](const QString& text) {
        return std::ranges::any_of(itemsBelow(renderer->root()), [&](const QQuickItem* item) {
            return item->property("figures").isValid() && item->property("text") == text;
        });
    };
    EXPECT_TRUE(shown("00:00"));
    play(nowPlaying({{13, D::real(318)}}));
    renderer->layOut();
    EXPECT_TRUE(shown("05:18"));
}

TEST_F(DisplaySceneTest, TheLinesAreLaidOutAnewWhenAFontComesOrGoes) {
    showPlaying();
    const auto& panel = *renderer->root().findChild<PanelItem*>();
    int before = panel.layoutCount();
    const int font = QFontDatabase::addApplicationFont("/usr/share/fonts/opentype/inter/Inter-Bold.otf");
    ASSERT_GE(font, 0);
    renderer->layOut();
    EXPECT_GT(panel.layoutCount(), std::exchange(before, panel.layoutCount()));
    QFontDatabase::removeApplicationFont(font);
    renderer->layOut();
    EXPECT_GT(panel.layoutCount(), before);
}

TEST_F(DisplaySceneTest, WithReducedMotionOneAlbumFadesIntoAnotherAndNothingTurns) {
    answer(scripts::nowPlaying(), playing());
    view->setReducedMotion(true);
    show();
    const D red = D::data(encoded(plainPicture(Qt::red, {16, 12})));
    play(nowPlaying({{1, text("Due")}, {3, text("Due")}, {11, red}}));
    const QImage first = renderer->render();
    EXPECT_EQ(first.pixelColor(300, 20), coverColour) << "it stays in its place";
    EXPECT_EQ(first.pixelColor(300, 580), coverColour);
    advance(180ms);
    const QColor half = picture().pixelColor(20, 300);
    EXPECT_GT(half.red(), 60);
    EXPECT_LT(half.red(), 200);
    EXPECT_GT(half.green(), 30);
    advance(2s);
    EXPECT_EQ(picture().pixelColor(20, 300), QColor(Qt::red));

    view->tapCover();
    advance(500ms);
    EXPECT_NE(picture().pixelColor(20, 300), QColor(Qt::red));
    EXPECT_GT(picture().pixelColor(20, 300).red(), 60) << "the sleeve stands where it stood and fades";
}

TEST_F(DisplaySceneTest, TheCommentGivesWayToTheBarInFullScreen) {
    showEveryLine();
    settings.setShowTrackFlags(true);
    answer(scripts::nowPlaying(),
           nowPlaying({{10, text("Italy, Japan. Registrato dal vivo a Trieste nel maggio 2019, missaggio di "
                                 "Ada Ferri, pianoforte, e un coro di trenta voci, tutte in piedi "
                                 "sul molo, al buio, davanti a un pubblico di pescatori e gatti.")}}));
    windows.addWindow().toggleFullScreen();
    open({1920, 1080});
    advance(4s);
    const auto shownLines = [this](PanelBlock block) {
        int count = 0;
        for (const QQuickItem* item : itemsBelow(renderer->root()))
            count += item->property("lineBlock") == static_cast<int>(block) && item->isVisible();
        return count;
    };
    EXPECT_EQ(shownLines(PanelBlock::Comment), 5);
    view->controls()->setShowTrackControls(true);
    advance(300ms);
    EXPECT_EQ(shownLines(PanelBlock::Comment), 0);
    EXPECT_EQ(shownLines(PanelBlock::Clock), 1);
    view->controls()->setShowTrackControls(false);
    advance(300ms);
    EXPECT_EQ(shownLines(PanelBlock::Comment), 5);
}

TEST_F(DisplaySceneTest, TheBarKeepsThePressesThatFallOnIt) {
    answer(scripts::tracksByDisc(), discs({{"Uno", "Due", "Tre"}}));
    showPlaying();
    const QPoint bare(400, 515); // between the buttons and the slider, over the cover
    click({100, 560});
    advance(2s);
    for (const bool isFlipped : {true, false}) {
        ASSERT_EQ(view->isFlipped(), isFlipped);
        view->controls()->setShowTrackControls(true);
        advance(300ms);
        sent.clear();
        click(bare);
        EXPECT_EQ(view->isFlipped(), isFlipped);
        EXPECT_EQ(std::count_if(sent.begin(), sent.end(),
                                [](const QString& script) { return script.contains("play "); }),
                  0);
        QTest::mouseMove(&renderer->window(), bare);
        EXPECT_EQ(view->hoveredTrack(1), -1) << "a row under the panel does not light up";
        view->controls()->setShowTrackControls(false);
        QTest::mouseMove(&renderer->window(), {900, 30});
        advance(2s);
        click({100, 560});
        advance(2s);
    }
}

TEST_F(DisplaySceneTest, TheFrostIsOfWhatLiesBehindTheBar) {
    const auto frostAt = [this](int x) {
        view->controls()->setShowTrackControls(true);
        advance(1s);
        return picture().pixelColor(x, view->musicSource().isPlaying() ? 440 : 400);
    };
    show();
    ASSERT_FALSE(source->isPlayerActive());
    const QColor sleeve = frostAt(390);
    EXPECT_GT(sleeve.red(), sleeve.blue() + 20) << "the logo's sleeve";
    EXPECT_GT(frostAt(810).blue(), frostAt(810).red() + 5) << "the logo's ground";

    settings.setTracklistStyle(TracklistStyle::IPod);
    play(playing());
    advance(4s);
    const QColor front = frostAt(390);
    view->tapCover();
    advance(2s);
    const QColor white = frostAt(390);
    EXPECT_LT(std::max({white.red(), white.green(), white.blue()}) -
                  std::min({white.red(), white.green(), white.blue()}),
              12)
        << "the white list has no colour";
    EXPECT_NE(white, front);
    settings.setTracklistStyle(TracklistStyle::Standard);
    advance(1s);
    EXPECT_LT(frostAt(390).lightness(), white.lightness() - 10) << "the black list is darker";
}

TEST_F(DisplaySceneTest, WhileNothingMovesNothingIsDrawn) {
    showPlaying("paused");
    advance(2s); // the veil and the covers have come and faded in
    picture();
    const int before = renderer->drawRequests();
    advance(58s); // polls and clock ticks go on
    EXPECT_EQ(renderer->drawRequests(), before);

    settings.setShowDateAndTime(true);
    advance(1s);
    picture();
    const int clockFrom = renderer->drawRequests();
    advance(58s);
    EXPECT_GT(renderer->drawRequests(), clockFrom) << "a minute of the clock";
    EXPECT_LE(renderer->drawRequests(), clockFrom + 10);

    play(playing());
    advance(2s);
    picture();
    const int playingFrom = renderer->drawRequests();
    advance(20s);
    EXPECT_LE(renderer->drawRequests() - playingFrom, 2 * 21)
        << "a request or two for each second of the position";
}

TEST_F(DisplaySceneTest, WhatCannotBeSeenDoesNotMove) {
    answer(scripts::nowPlaying(), playing("paused"));
    windows::FakeWindow& window = windows.addWindow();
    show();
    int album = 0;
    const auto framesOfAnAlbum = [&] {
        const std::string name = std::to_string(++album);
        play(nowPlaying(
            {{1, text(name.c_str())}, {3, text(name.c_str())}, {11, D::data(png(8))}, {12, text("paused")}}));
        int frames = 0;
        for (int step = 0; step < 150; ++step) {
            const int before = renderer->drawRequests();
            advance(20ms);
            if (renderer->drawRequests() == before)
                continue;
            renderer->render();
            ++frames;
        }
        return frames;
    };
    constexpr int oneForEachChange = 10;
    EXPECT_GT(framesOfAnAlbum(), 60);
    window.miniaturize();
    EXPECT_LT(framesOfAnAlbum(), oneForEachChange);
    window.orderFront();
    EXPECT_GT(framesOfAnAlbum(), 60);
    window.orderOut();
    EXPECT_LT(framesOfAnAlbum(), oneForEachChange);
    view->tapCover();
    EXPECT_GT(renderer->root().findChild<TracklistModel*>()->rowCount(), 0) << "turned at once";
}

TEST_F(DisplaySceneTest, ALogoFillsTheWindowWhileNothingPlays) {
    showPlaying();
    const QColor bare = Qt::magenta;
    renderer->window().setColor(bare);
    answer(scripts::nowPlaying(), [] { return failure(); });
    source->fetchNowPlaying();
    for (int frame = 0; frame < 20; ++frame) {
        dispatcher.runUntilIdle();
        EXPECT_NE(renderer->render().pixelColor(1180, 580), bare) << frame;
    }
    show();
    const QImage shown = picture();
    EXPECT_NE(shown.pixelColor(20, 580), QColor(Qt::black));
    EXPECT_NE(shown.pixelColor(1180, 580), QColor(Qt::black));
}

} // namespace
} // namespace tarnwick
