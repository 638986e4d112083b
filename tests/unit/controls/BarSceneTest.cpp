#include "controls/bar/Backdrop.h"
#include "music/Scripts.h"
#include "tests/unit/controls/SceneFixture.h"

#include <QAccessible>

using testing::ElementsAre;

namespace tarnwick {
namespace {

using BarSceneTest = SceneFixture;

TEST_F(BarSceneTest, TheBarsSizesFollowTheWindow) {
    QQuickItem* bar = showBar();
    const struct {
        double width, button, slider, panelWidth, panelHeight;
    } rows[] = {{1200, 44, 260, 460, 140},
                {3000, 66, 390, 690, 210},
                {900, 33, 195, 345, 105},
                {400, 22, 130, 230, 70}};
    controls->setShowTrackControls(true);
    for (const auto& row : rows) {
        bar->setSize({row.width, 600});
        QQuickItem* button = one(bar, "identifier", "next");
        EXPECT_EQ(button->size(), QSizeF(row.button, row.button)) << row.width;
        QQuickItem* shuffle = one(bar, "identifier", "shuffle");
        EXPECT_TRUE(waitFor([&] {
            return shuffle->x() - button->x() == row.button + 24 * controls->sizeScale();
        })) << row.width;
        auto* panel = bar->property("panelItem").value<QQuickItem*>();
        EXPECT_EQ(panel->size(), QSizeF(row.panelWidth, row.panelHeight));
        EXPECT_EQ(panel->mapToScene({0, panel->height()}).y(), 530)
            << "70 above the bottom while nothing plays";
        EXPECT_EQ(one(bar, "identifier", "playPause")->property("symbol"), "play.fill");
    }
    play(nowPlaying());
    bar->setSize({1200, 600});
    auto* panel = bar->property("panelItem").value<QQuickItem*>();
    EXPECT_EQ(panel->mapToScene({0, panel->height()}).y(), 570);
    EXPECT_EQ(one(bar, "identifier", "playPause")->property("symbol"), "pause.fill");
}

TEST_F(BarSceneTest, ThePointerShowsTheBarAndAButtonSaysWhatItDoesOnceItHasRested) {
    QQuickItem* bar = showBar();
    players::Capabilities capabilities;
    controls->setCapabilities(capabilities); // a dimmed button's tip is as bright as any other
    QTest::mouseMove(window.get(), QPoint(20, 20));
    EXPECT_FALSE(controls->showTrackControls());
    for (const auto& [button, tip] :
         {std::pair("previous", "Previous Track"), std::pair("playPause", "Play"),
          std::pair("next", "Next Track"), std::pair("shuffle", "Shuffle: off"),
          std::pair("playlist", "Playlists"), std::pair("preferences", "Preferences")}) {
        QQuickItem* item = one(bar, "identifier", QString::fromLatin1(button));
        const auto shown = [&] { return !find(item, "text", QString::fromLatin1(tip)).isEmpty(); };
        pointAt(item);
        pass(std::chrono::milliseconds(600));
        EXPECT_FALSE(shown()) << tip;
        EXPECT_TRUE(waitFor(shown)) << tip;
        EXPECT_EQ(item->opacity(), 1) << tip;
        EXPECT_TRUE(controls->showTrackControls() && controls->isHovered());
        EXPECT_EQ(controls->hoveredButton(), button);
        QTest::mouseMove(window.get(), QPoint(20, 20));
        EXPECT_TRUE(waitFor([&] { return !shown() && controls->hoveredButton().isEmpty(); })) << tip;
    }
}

TEST_F(BarSceneTest, AButtonThatThePointerJumpsToIsLit) {
    QQuickItem* bar = showBar();
    const QStringList buttons{"previous", "playPause", "next", "shuffle", "playlist", "preferences"};
    for (const QString& from : buttons) {
        for (const QString& to : buttons) {
            pointAt(one(bar, "identifier", from));
            pointAt(one(bar, "identifier", to));
            EXPECT_EQ(controls->hoveredButton(), to) << "from " << from.toStdString();
        }
    }
}

TEST_F(BarSceneTest, WhatLiesBehindChangesOnceAndWithoutAJump) {
    QQuickItem* bar = showBar();
    controls->setShowTrackControls(true);
    const auto behind = [&](const QColor& colour) {
        Backdrop backdrop;
        backdrop.window = {1200, 600};
        backdrop.gradientColors = {colour, colour};
        bar->setProperty("backdrop", QVariant::fromValue(backdrop));
    };
    const auto* panel = bar->property("panelItem").value<QQuickItem*>();
    const auto shown = [&] {
        return window->grabWindow().pixelColor(
            (panel->mapToScene({20, 20}) * window->devicePixelRatio()).toPoint());
    };
    behind(Qt::black);
    pass(std::chrono::milliseconds(1000));
    std::vector<int> seen{shown().green()};
    behind(Qt::darkGreen);
    shown();
    behind(Qt::green); // while the one before is being shown
    for (int frame = 0; frame < 60; ++frame) {
        pass(std::chrono::milliseconds(20));
        seen.push_back(shown().green());
    }
    EXPECT_GT(seen.back(), seen.front() + 40) << "another colour";
    for (std::size_t i = 1; i < seen.size(); ++i) {
        EXPECT_GE(seen[i], seen[i - 1] - 1) << "flickers in frame " << i;
        EXPECT_LE(seen[i], seen[i - 1] + (seen.back() - seen.front()) / 3) << "jumps in frame " << i;
    }
    EXPECT_EQ(seen[40], seen.back()) << "and rests";
}

TEST_F(BarSceneTest, ASecondClickWhereTheButtonWasIsNoVolume) {
    QQuickItem* bar = showBar();
    controls->setShowTrackControls(true);
    play(nowPlaying());
    controls->setVolume(0.5);
    dispatcher.runUntilIdle();
    const auto clickOnSlider = [&](QPoint off = {}) {
        QTest::mouseClick(window.get(), Qt::LeftButton, {},
                          centre(one(bar, "knobSize", 18.0)) + QPoint(60, 0) + off);
        dispatcher.runUntilIdle();
        return source->volumeLevel() != 0.5;
    };
    const auto pause = [&](const char* state) {
        controls->setVolume(0.5);
        play(nowPlaying({{12, text(state)}}));
        dispatcher.advance(std::chrono::milliseconds(900));
    };
    play(nowPlaying({{12, text("paused")}}));
    QTest::mouseMove(window.get(), centre(one(bar, "knobSize", 18.0)) + QPoint(60, 0));
    play(nowPlaying({{12, text("playing")}}));
    pause("paused");
    EXPECT_FALSE(clickOnSlider()) << "the row has moved under the pointer";
    dispatcher.advance(std::chrono::milliseconds(200));
    EXPECT_TRUE(clickOnSlider()) << "a second has passed";
    play(nowPlaying({{12, text("playing")}}));
    pause("paused");
    QTest::mouseMove(window.get(), centre(one(bar, "knobSize", 18.0)));
    EXPECT_TRUE(clickOnSlider()) << "the pointer has moved since";
}

TEST_F(BarSceneTest, DraggingTheSliderSendsEveryLevelDownToTheEnds) {
    QQuickItem* bar = showBar();
    controls->setShowTrackControls(true);
    QQuickItem* slider = one(bar, "knobSize", 18.0);
    const QPoint middle = centre(slider);
    QTest::mousePress(window.get(), Qt::LeftButton, {}, middle);
    for (const int x : {100, 200, -300, -400, 0, 300})
        QTest::mouseMove(window.get(), middle + QPoint(x, 0));
    dispatcher.advance(std::chrono::seconds(5));
    EXPECT_TRUE(controls->showTrackControls()) << "a drag that leaves the bar holds it";
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, middle + QPoint(300, 0));
    EXPECT_EQ(source->volumeLevel(), 1);
    EXPECT_EQ(sentCount(scripts::setVolume(1)), 1 + 1);
    EXPECT_EQ(sentCount(scripts::setVolume(0)), 1) << "at the end already, nothing changes";
    EXPECT_EQ(slider->property("position"), 1.0);
}

TEST_F(BarSceneTest, TheKnobDoesNotJumpWhenItIsTakenAtItsEdgeAndTheWheelMovesIt) {
    QQuickItem* bar = showBar();
    controls->setShowTrackControls(true);
    controls->setVolume(0.5);
    dispatcher.runUntilIdle();
    QQuickItem* slider = one(bar, "knobSize", 18.0);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, centre(slider) + QPoint(7, 0));
    dispatcher.runUntilIdle();
    EXPECT_EQ(source->volumeLevel(), 0.5);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, centre(slider) + QPoint(60, 0));
    dispatcher.runUntilIdle();
    EXPECT_NEAR(source->volumeLevel(), 0.5 + 60 / 242.0, 1e-9);
    controls->setVolume(0.5);
    dispatcher.runUntilIdle();
    wheel(slider, -1);
    dispatcher.runUntilIdle();
    EXPECT_NEAR(source->volumeLevel(), 0.45, 1e-9);
}

TEST_F(BarSceneTest, TheKeyboardGoesThroughTheBarAndOutOfIt) {
    showBar();
    QQuickItem other(window->contentItem()); // what the keys belong to otherwise
    other.forceActiveFocus();
    controls->setVolume(0.5);
    dispatcher.runUntilIdle();
    EXPECT_THAT(walk(), ElementsAre("Button Previous Track", "Button Play", "Button Next Track",
                                    "Button Shuffle: off", "Button Playlists", "Button Preferences",
                                    "Slider Volume"));
    EXPECT_EQ(window->activeFocusItem(), &other);
    dispatcher.advance(std::chrono::seconds(1));
    EXPECT_FALSE(controls->showTrackControls()) << "nothing holds it any more";

    press(Qt::Key_Tab);
    controls->enterBar();
    controls->leaveBar();
    dispatcher.advance(std::chrono::seconds(5));
    EXPECT_TRUE(controls->showTrackControls()) << "the focus holds it";
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_THAT(called, ElementsAre("playPause"));
    for (const auto& [key, level] : {std::pair(Qt::Key_PageUp, 0.55), std::pair(Qt::Key_PageDown, 0.5)}) {
        press(key);
        dispatcher.runUntilIdle();
        EXPECT_NEAR(source->volumeLevel(), level, 1e-9);
    }
    QTest::keyClick(window.get(), Qt::Key_Backtab);
    QTest::keyClick(window.get(), Qt::Key_Backtab);
    EXPECT_EQ(window->activeFocusItem(), &other);

    for (const auto& leave :
         {std::function<void()>([this] { press(Qt::Key_Escape); }), std::function<void()>([this] {
              QTest::mouseClick(window.get(), Qt::LeftButton, {}, QPoint(50, 50));
          }),
          std::function<void()>([this] { dispatcher.advance(std::chrono::seconds(10)); })}) {
        press(Qt::Key_Tab);
        ASSERT_NE(window->activeFocusItem(), &other);
        leave();
        EXPECT_EQ(window->activeFocusItem(), &other);
    }
}

TEST_F(BarSceneTest, TheSliderTellsItsValueAndTakesOne) {
    QQuickItem* bar = showBar();
    controls->setShowTrackControls(true);
    controls->setVolume(0.5);
    dispatcher.runUntilIdle();
    auto* interface = QAccessible::queryAccessibleInterface(one(bar, "knobSize", 18.0));
    ASSERT_TRUE(interface && interface->valueInterface() && interface->actionInterface());
    EXPECT_EQ(interface->valueInterface()->currentValue(), 0.5);
    EXPECT_EQ(interface->valueInterface()->maximumValue(), 1.0);
    interface->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    dispatcher.runUntilIdle();
    EXPECT_NEAR(source->volumeLevel(), 0.55, 1e-9);
}

TEST_F(BarSceneTest, AMessageStandsAboveTheBarForFourSeconds) {
    QQuickItem* bar = showBar();
    const QString message = "Traccia <b>non</b> trovata";
    controls->showMessage("Un'altra");
    dispatcher.advance(std::chrono::seconds(3));
    controls->showMessage(message); // replaces it, and has its own four seconds
    ASSERT_TRUE(waitFor([&] { return !find(bar, "text", message).isEmpty(); }));
    QQuickItem* banner = one(bar, "text", message)->parentItem();
    ASSERT_TRUE(waitFor([&] { return banner->opacity() == 1; }));
    EXPECT_LT(banner->mapToScene({0, banner->height()}).y(), 390) << "the panel begins there";
    EXPECT_NEAR(banner->mapToScene({banner->width() / 2, 0}).x(), 600, 1);
    dispatcher.advance(std::chrono::milliseconds(3999));
    pass(std::chrono::seconds(1));
    EXPECT_EQ(banner->opacity(), 1);
    dispatcher.advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(waitFor([&] { return find(bar, "text", message).isEmpty(); }));
}

} // namespace
} // namespace tarnwick
