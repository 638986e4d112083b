#include "display/DisplayScene.h"

#include "display/SceneRenderer.h"
#include "platform/animation/VirtualAnimationDriver.h"
#include "tests/unit/display/DisplayFixture.h"

#include <QQmlEngine>
#include <QtTest>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

const QColor coverColour(Qt::darkCyan);

/// The scene, drawn without a screen, on a time that the test moves.
class DisplaySceneTest : public DisplayFixture {
protected:
    void show(QSize size = {1200, 600}) {
        renderer = std::make_unique<SceneRenderer>(DisplayScene::create(engine, *view), size);
        view->appear();
        advance(4s);
    }

    void advance(std::chrono::milliseconds duration) {
        constexpr std::chrono::milliseconds step = 20ms;
        for (auto end = 0ms; end < duration; end += step) {
            dispatcher.advance(step);
            animations.step(step.count());
        }
    }

    QImage picture() {
        renderer->render(); // lays out, and so asks for pictures
        return renderer->render();
    }

    void click(QPoint where) {
        QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, where);
        dispatcher.runUntilIdle();
    }

    static D playing(const char* state = "playing") {
        return nowPlaying({{11, D::data(png(8))}, {12, text(state)}});
    }

    animation::VirtualAnimationDriver animations;
    QQmlEngine engine;
    std::unique_ptr<SceneRenderer> renderer;
};

TEST_F(DisplaySceneTest, ShowsTheCoverOnTheLeftAndTheRecordBesideIt) {
    answer(scripts::nowPlaying(), playing());
    show();
    const QImage shown = picture();
    EXPECT_EQ(shown.pixelColor(300, 300), coverColour);
    EXPECT_NE(shown.pixelColor(850, 300), QColor(Qt::black)) << "the record";
    EXPECT_EQ(shown.pixelColor(920, 580), QColor(Qt::black)) << "the background";
}

TEST_F(DisplaySceneTest, TheRecordGoesBehindTheCoverAndComesBack) {
    answer(scripts::nowPlaying(), playing());
    show();
    play(nowPlaying({{1, text("Due")}, {3, text("Due")}, {11, D::data(png(8))}}));
    advance(680ms);
    EXPECT_EQ(picture().pixelColor(850, 300), QColor(Qt::black)) << "away";
    advance(800ms);
    EXPECT_NE(picture().pixelColor(850, 300), QColor(Qt::black));
    EXPECT_EQ(picture().pixelColor(300, 300), coverColour) << "the cover has spun";
}

TEST_F(DisplaySceneTest, ATapTurnsTheCoverAndATapOnARowPlaysIt) {
    answer(scripts::nowPlaying(), playing());
    answer(scripts::tracksByDisc(),
           D::list({D::list({D::integer(1), D::list({D::list({D::integer(1), text("Uno")}),
                                                     D::list({D::integer(2), text("Due")})})})}));
    show();
    click({300, 300});
    EXPECT_TRUE(view->isFlipped());
    advance(480ms);
    EXPECT_EQ(picture().pixelColor(300, 300), coverColour) << "still the front, just before the edge";
    advance(600ms);
    EXPECT_NE(picture().pixelColor(300, 500), coverColour);
    sent.clear();
    // Below the small copy, which is 285 high with 20 above, 20 below, in a list that begins at 15.
    const int firstRow = 15 + 20 + 285 + 20 + 19;
    click({300, firstRow + 38});
    EXPECT_THAT(sent,
                testing::Contains(scripts::playTitle(QStringLiteral("Due"), QStringLiteral("Lontano"))));
    EXPECT_TRUE(view->isFlipped()) << "the tap was the row's alone";
    click({300, 560});
    EXPECT_FALSE(view->isFlipped());
}

TEST_F(DisplaySceneTest, ALogoFillsTheWindowWhileNothingPlays) {
    answer(scripts::nowPlaying(), [] { return failure(); });
    show();
    const QImage shown = picture();
    EXPECT_NE(shown.pixelColor(20, 580), QColor(Qt::black));
    EXPECT_NE(shown.pixelColor(1180, 580), QColor(Qt::black));
}

TEST_F(DisplaySceneTest, ASlideSurvivesAResizeInItsMiddle) {
    answer(scripts::nowPlaying(), playing());
    show();
    play(nowPlaying({{1, text("Due")}, {3, text("Due")}, {11, D::data(png(8))}}));
    advance(300ms);
    renderer->resize({600, 300});
    advance(3s);

    const QImage shown = picture();
    EXPECT_EQ(shown.pixelColor(150, 150), coverColour);
    EXPECT_NE(shown.pixelColor(425, 150), QColor(Qt::black)) << "the record is out";
    EXPECT_EQ(shown.pixelColor(470, 290), QColor(Qt::black)) << "and in its place";
}

} // namespace
} // namespace tarnwick
