#include "display/panel/PanelItem.h"
#include "platform/windows/SingleTouch.h"
#include "tests/unit/display/SceneFixture.h"

#include <QSignalSpy>
#include <QTest>

#include <utility>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

/// The display under fingers, a mouse and its wheel, all as real events of the window.
class GesturesTest : public SceneFixture {
protected:
    void SetUp() override {
        SceneFixture::SetUp();
        answer(scripts::nowPlaying(), nowPlaying({{11, D::data(png(8))}}));
        answer(scripts::tracksByDisc(), discs({Titles(40, "Uno")}));
    }

    void show() {
        open();
        advance(4s);
        ASSERT_TRUE(waitForLines());
        sent.clear();
    }

    /// A finger's way, with a point each 16 ms; it rests at the end when `rests`.
    void swipe(QPoint from, QPoint to, bool rests = false) {
        const int steps = 20;
        finger().press(0, from).commit();
        for (int step = 1; step <= steps; ++step) {
            QTest::qWait(2);
            finger().move(0, from + (to - from) * step / steps).commit();
            renderer->layOut(); // moves wait for the next frame
        }
        if (rests)
            QTest::qWait(120);
        finger().release(0, to).commit();
        dispatcher.runUntilIdle();
    }
    void tap(QPoint place) {
        finger().press(0, place).commit();
        finger().release(0, place).commit();
        dispatcher.runUntilIdle();
    }

    QTest::QTouchEventSequence finger() {
        return QTest::touchEvent(&renderer->window(), screen.get(), false);
    }

    void wheel(QPoint place, int notches) {
        QWheelEvent event(place, place, {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&renderer->window(), &event);
        dispatcher.runUntilIdle();
    }

    void doubleClick(QPoint place) {
        QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(&renderer->window(), Qt::LeftButton, {}, place);
        dispatcher.runUntilIdle();
    }

    void setVolume(double level) {
        source->setVolume(level);
        dispatcher.runUntilIdle();
    }

    void turnCover() {
        view->tapCover();
        advance(1100ms);
    }

    bool isBarShown() { return view->controls()->showTrackControls(); }
    int asked(const QString& script) { return std::exchange(sent, {}).count(script); }

    QQuickItem* cover() { return stage().property("coverItem").value<QQuickItem*>(); }
    QQuickItem* list() {
        for (QQuickItem* item : itemsBelow(renderer->root()))
            if (item->inherits("QQuickListView"))
                return item;
        return nullptr;
    }

    const QPoint onCover{300, 250};
    const QPoint lowOnCover{300, 500};
    const QPoint onGround{1000, 350};
    const QPoint lowOnGround{1000, 500};
    std::unique_ptr<QPointingDevice> screen{QTest::createTouchDevice()};
    windows::SingleTouch single{dispatcher};

private:
    bool waitForLines() {
        settle();
        return renderer->root().findChild<PanelItem*>()->hasProgress();
    }
};

TEST_F(GesturesTest, AFingersTapLowCallsTheBarAndElsewhereTurnsTheCover) {
    show();
    struct Row {
        QPoint place;
        bool calls;
        bool turns;
    };
    for (const Row& row :
         {Row{onGround, false, false}, Row{lowOnGround, true, false}, Row{lowOnCover, true, false},
          Row{onCover, false, true}, Row{{600, 510}, true, false}}) {
        SCOPED_TRACE(testing::Message() << row.place.x() << ", " << row.place.y());
        tap(row.place);
        EXPECT_EQ(isBarShown(), row.calls);
        EXPECT_EQ(view->isFlipped(), row.turns);
        EXPECT_THAT(std::exchange(sent, {}), testing::Not(testing::Contains(scripts::playPause())))
            << "a button that cannot be seen";
        advance(3900ms);
        EXPECT_EQ(isBarShown(), row.calls);
        advance(300ms);
        EXPECT_FALSE(isBarShown());
        if (view->isFlipped())
            turnCover();
    }
    tap(lowOnGround);
    advance(3s);
    tap({498, 484}); // the second button
    EXPECT_EQ(asked(scripts::playPause()), 1);
    advance(3s);
    EXPECT_TRUE(isBarShown()) << "it is in use";
    advance(1500ms);
    EXPECT_FALSE(isBarShown());
}

TEST_F(GesturesTest, ASwipeOverTheCoverGoesToAnotherTrackOrFallsBack) {
    show();
    struct Row {
        const char* what;
        QPoint from;
        QPoint to;
        QString asks;
    };
    const QPoint left(-300, 0), right(300, 0), little(-60, 0), down(0, 200);
    for (const Row& row :
         {Row{"left", onCover, onCover + left, scripts::nextTrack()},
          Row{"right", onCover, onCover + right, scripts::previousTrack()},
          Row{"little", onCover, onCover + little, {}}, Row{"down", onCover, onCover + down, {}},
          Row{"beside the cover", onGround, onGround + left, {}}}) {
        SCOPED_TRACE(row.what);
        swipe(row.from, row.to, true);
        for (const QString& script : {scripts::nextTrack(), scripts::previousTrack()})
            EXPECT_EQ(sentCount(script), script == row.asks);
        EXPECT_FALSE(view->isFlipped());
        EXPECT_FALSE(isBarShown());
        sent.clear();
        advance(1s);
        EXPECT_EQ(cover()->mapToScene({}).x(), 0);
        EXPECT_EQ(cover()->parentItem()->opacity(), 1);
    }
    turnCover();
    swipe({300, 400}, {20, 400});
    EXPECT_EQ(asked(scripts::nextTrack()), 0) << "its back is a list";
}

TEST_F(GesturesTest, TheCoverFollowsTheFinger) {
    show();
    finger().press(0, onCover).commit();
    for (int x = 20; x <= 100; x += 20) {
        finger().move(0, onCover - QPoint(x, 0)).commit();
        renderer->layOut();
    }
    EXPECT_NEAR(cover()->mapToScene({}).x(), -100, 25);
    finger().press(1, onCover + QPoint(200, 200)).stationary(0).commit();
    finger().release(0, onCover - QPoint(300, 0)).release(1, onCover).commit();
    advance(500ms);
    EXPECT_EQ(asked(scripts::nextTrack()), 0) << "a second finger came";
    EXPECT_EQ(cover()->mapToScene({}).x(), 0);
}

TEST_F(GesturesTest, TwoPointsAreNoTap) {
    show();
    for (const QPoint place : {onCover, lowOnGround}) {
        finger().press(0, place).press(1, place + QPoint(0, -80)).commit();
        finger().release(0, place).release(1, place + QPoint(0, -80)).commit();
        finger().press(0, place).commit();
        finger().stationary(0).press(1, place + QPoint(0, -80)).commit();
        finger().stationary(0).release(1, place + QPoint(0, -80)).commit();
        finger().release(0, place).commit();
        advance(100ms);
        EXPECT_FALSE(view->isFlipped());
        EXPECT_FALSE(isBarShown());
    }
    tap(onCover);
    EXPECT_TRUE(view->isFlipped()) << "the next touch counts";
}

TEST_F(GesturesTest, AFingerThatStaysIsNoTap) {
    show();
    QSignalSpy held(&single, &windows::SingleTouch::held);
    finger().press(0, onCover).commit();
    advance(windows::SingleTouch::holdTime() / 1ms * 1ms + 20ms);
    ASSERT_EQ(held.count(), 1);
    EXPECT_EQ(held.first().at(1).toPointF(), onCover);
    finger().release(0, onCover).commit();
    EXPECT_FALSE(view->isFlipped());
    finger().press(0, onCover).commit();
    finger().move(0, onCover + QPoint(60, 0)).commit();
    renderer->layOut();
    advance(2s);
    EXPECT_EQ(held.count(), 1) << "it moves";
    finger().release(0, onCover + QPoint(60, 0)).commit();
}

TEST_F(GesturesTest, AFingerAtTheRightEdgeIsTheVolume) {
    show();
    setVolume(0.5);
    swipe({1190, 400}, {1190, 220});
    EXPECT_NEAR(source->volumeLevel(), 0.97, 0.05);
    EXPECT_TRUE(view->controls()->volumeScale()->isShown());
    swipe({1190, 200}, {1190, 590});
    EXPECT_EQ(source->volumeLevel(), 0);
    advance(1600ms);
    EXPECT_FALSE(view->controls()->volumeScale()->isShown());
    tap({1190, 300});
    swipe({1000, 400}, {1000, 220});
    EXPECT_EQ(source->volumeLevel(), 0) << "only at the edge";
}

TEST_F(GesturesTest, TheListScrollsUnderTheFingerAndPlaysWhatIsTapped) {
    show();
    turnCover();
    sent.clear();
    const double before = list()->property("contentY").toDouble();
    swipe({300, 420}, {300, 300});
    advance(4s); // until it has run out: a tap while it moves stops it
    EXPECT_NE(list()->property("contentY").toDouble(), before);
    EXPECT_TRUE(view->isFlipped());
    EXPECT_EQ(asked(scripts::playTitle("Uno", "Lontano")), 0);
    tap({300, 420});
    EXPECT_EQ(asked(scripts::playTitle("Uno", "Lontano")), 1);
    EXPECT_TRUE(view->hoveringTracks().isEmpty()) << "no finger stays";
}

TEST_F(GesturesTest, AMouseDoesNothingOfAFingers) {
    show();
    const auto drag = [this](QPoint from, QPoint to) {
        QTest::mousePress(&renderer->window(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(&renderer->window(), from + (to - from) * step / 10);
        QTest::mouseRelease(&renderer->window(), Qt::LeftButton, {}, to);
        dispatcher.runUntilIdle();
    };
    drag(onCover, onCover - QPoint(280, 0));
    drag({1190, 400}, {1190, 220});
    QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, {1000, 440});
    EXPECT_THAT(sent, testing::Not(testing::Contains(scripts::nextTrack())));
    EXPECT_EQ(sent.filter("set sound volume").size(), 0);
    EXPECT_FALSE(view->isFlipped());
    QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, {100, 570});
    EXPECT_TRUE(view->isFlipped()) << "low on the cover too";
}

TEST_F(GesturesTest, ADoubleClickOnTheGroundFillsTheScreen) {
    windows::FakeWindow& window = windows.addWindow();
    show();
    doubleClick(onGround);
    EXPECT_TRUE(window.isFullScreen());
    doubleClick({800, 300}); // the record
    EXPECT_FALSE(window.isFullScreen());
    doubleClick(onCover);
    EXPECT_FALSE(window.isFullScreen());
    turnCover();
    doubleClick({300, 420});
    EXPECT_FALSE(window.isFullScreen()) << "rows";
}

TEST_F(GesturesTest, TheWheelIsTheVolumeButOverAList) {
    show();
    setVolume(0.5);
    wheel(onGround, 1);
    wheel(onCover, 2);
    EXPECT_EQ(qRound(source->volumeLevel() * 100), 65);
    for (int notch = 0; notch < 10; ++notch)
        wheel(onGround, -1);
    EXPECT_EQ(asked(scripts::setVolume(0.15)), 1) << "in whole steps, whatever a fraction is in binary";
    turnCover();
    setVolume(0.5);
    const double before = list()->property("contentY").toDouble();
    wheel({300, 420}, -1);
    advance(500ms);
    EXPECT_NE(list()->property("contentY").toDouble(), before);
    for (int notch = 0; notch < 60; ++notch) // past its end
        wheel({300, 420}, -1);
    EXPECT_EQ(source->volumeLevel(), 0.5);
}

TEST_F(GesturesTest, APressOnTheProgressRowSeeksWhereThePlayerCan) {
    show();
    const QRectF bar = renderer->root().findChild<PanelItem*>()->progressBar();
    const QPoint quarter = QPointF(bar.x() + bar.width() / 4, bar.center().y()).toPoint();
    const auto place = [&] { return (quarter.x() + 0.0 - bar.x()) / bar.width() * 318.5; };
    QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, quarter);
    EXPECT_EQ(asked(scripts::setPosition(place())), 0);
    view->setCapabilities({.canSeek = true});
    QTest::mouseClick(&renderer->window(), Qt::LeftButton, {}, quarter);
    dispatcher.runUntilIdle();
    EXPECT_EQ(asked(scripts::setPosition(place())), 1);
    EXPECT_NEAR(source->elapsedTime(), 318.5 / 4, 2);
    tap(quarter + QPoint(0, 8));
    EXPECT_EQ(asked(scripts::setPosition(place())), 1) << "a finger is thick";
    tap(quarter + QPoint(0, 40));
    EXPECT_THAT(sent, testing::IsEmpty());
}

} // namespace
} // namespace tarnwick
