#include "visuals/BackgroundManager.h"

#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/Pictures.h"
#include "visuals/Palette.h"

#include <gtest/gtest.h>

namespace tarnwick {

namespace {

constexpr QSize small{60, 60};
constexpr QSize large{1200, 1200}; // more than is looked at on the main thread

class BackgroundManagerTest : public testing::Test {
protected:
    BackgroundManagerTest() {
        QObject::connect(&manager, &BackgroundManager::gradientColorsChanged, [this] { log += "g"; });
        QObject::connect(&manager, &BackgroundManager::darkGradientColorsChanged, [this] { log += "d"; });
        QObject::connect(&manager, &BackgroundManager::dynamicTextColorChanged, [this] { log += "t"; });
    }

    Colour top() const { return manager.gradientColors().front(); }

    dispatch::VirtualDispatcher dispatcher;
    int drawn = 0;
    BackgroundManager manager{dispatcher, [this](int count) { return drawn++ % count; }};
    std::string log;
};

} // namespace

TEST_F(BackgroundManagerTest, TextFollowsTheGradientInATaskOfItsOwn) {
    manager.applyBackground(BackgroundOption::Black, std::nullopt);
    dispatcher.runUntilIdle();
    EXPECT_EQ(log, "") << "it is black from the start";
    manager.applyBackground(BackgroundOption::White, std::nullopt);
    EXPECT_EQ(top(), colours::white);
    EXPECT_EQ(manager.dynamicTextColor(), colours::white);
    dispatcher.runUntilIdle();
    EXPECT_EQ(manager.dynamicTextColor(), colours::black);
    EXPECT_EQ(log, "gt");
    manager.applyBackground(BackgroundOption::White, std::nullopt);
    dispatcher.runUntilIdle();
    EXPECT_EQ(log, "gt");
}

TEST_F(BackgroundManagerTest, GradientIsPublishedEvenWhenUnchanged) {
    const auto cover = plainCover(QColor(20, 0, 60), small);
    manager.applyBackground(BackgroundOption::Gradient, cover);
    manager.applyBackground(BackgroundOption::Gradient, cover);
    manager.applyBackground(BackgroundOption::OneColor, cover);
    manager.applyBackground(BackgroundOption::OneColor, cover);
    EXPECT_EQ(log, "ggg");
    EXPECT_EQ(manager.analysisCount(), 2);
}

TEST_F(BackgroundManagerTest, DarkPairIsWrittenByItsStyleAndTheFallbackAlone) {
    const auto cover = plainCover(QColor(200, 100, 0), small);
    manager.applyBackground(BackgroundOption::DarkColor, cover);
    const Colour dark = darkenColor({200 / 255.0, 100 / 255.0, 0, 1}, 0.3);
    EXPECT_EQ(manager.darkGradientColors(), (std::vector<Colour>{dark, dark}));
    EXPECT_EQ(manager.gradientColors(), manager.darkGradientColors());
    manager.applyBackground(BackgroundOption::Gradient, cover);
    EXPECT_EQ(manager.darkGradientColors().front(), dark);
    EXPECT_EQ(manager.paintedColors(BackgroundOption::DarkColor).front(), dark);
    manager.applyBackground(BackgroundOption::Gradient, std::nullopt);
    EXPECT_EQ(manager.paintedColors(BackgroundOption::Random),
              (std::vector<Colour>{colours::black, colours::grey}));
    EXPECT_EQ(manager.paintedColors(BackgroundOption::DarkColor),
              (std::vector<Colour>{colours::black, colours::black}));
}

TEST_F(BackgroundManagerTest, RandomKeepsItsChoiceUntilItIsCleared) {
    drawn = 1;
    manager.applyBackground(BackgroundOption::Random, std::nullopt);
    manager.applyBackground(BackgroundOption::Random, std::nullopt);
    EXPECT_EQ(manager.lastRandomChoice, BackgroundOption::White);
    EXPECT_EQ(drawn, 2);
    manager.lastRandomChoice.reset();
    manager.applyBackground(BackgroundOption::Random, std::nullopt);
    EXPECT_EQ(manager.lastRandomChoice, BackgroundOption::Gradient);
}

TEST_F(BackgroundManagerTest, LargeCoversAreLookedAtElsewhereAndPublishedInOrder) {
    const auto red = plainCover(QColor(255, 0, 0), large);
    manager.applyBackground(BackgroundOption::Gradient, red);
    manager.applyBackground(BackgroundOption::White, std::nullopt);
    EXPECT_EQ(log, ""); // white stands behind red in the queue
    dispatcher.runUntilIdle();
    EXPECT_EQ(top(), colours::white);
    EXPECT_EQ(manager.dynamicTextColor(), colours::black);
    EXPECT_EQ(log, "gtg"); // both have black text

    manager.applyBackground(BackgroundOption::Gradient, red); // known by now
    EXPECT_EQ(top(), (Colour{1, 0, 0, 1}));
    EXPECT_EQ(manager.analysisCount(), 1);
}

TEST_F(BackgroundManagerTest, TwoRequestsInFlightShareOneAnalysis) {
    const auto cover = plainCover(QColor(255, 0, 0), large);
    manager.applyBackground(BackgroundOption::Gradient, cover);
    manager.applyBackground(BackgroundOption::Gradient, cover);
    dispatcher.runUntilIdle();
    EXPECT_EQ(log, "gtg");
    EXPECT_EQ(manager.analysisCount(), 1);
}

TEST_F(BackgroundManagerTest, TextFitsTheLastOfTwoThatAreFoundTogether) {
    manager.applyBackground(BackgroundOption::Gradient, plainCover(Qt::yellow, large));
    manager.applyBackground(BackgroundOption::Black, std::nullopt);
    dispatcher.runUntilIdle();
    EXPECT_EQ(top(), colours::black);
    EXPECT_EQ(manager.dynamicTextColor(), colours::white);
}

TEST(BackgroundManager, MayGoWhileItsCoverIsLookedAt) {
    dispatch::VirtualDispatcher dispatcher;
    {
        BackgroundManager manager(dispatcher);
        manager.applyBackground(BackgroundOption::Gradient, plainCover(Qt::red, large));
        manager.applyBackground(BackgroundOption::White, std::nullopt);
    }
    dispatcher.runUntilIdle();
}

TEST(Palette, HasEveryStyleAsAFreshManagerShowsIt) {
    const auto cover = plainCover(QColor(200, 100, 0), small);
    const auto palettes = paletteOf(cover.pixels());
    ASSERT_EQ(palettes.size(), BackgroundManager::randomChoices.size());
    for (const StylePalette& palette : palettes) {
        dispatch::VirtualDispatcher dispatcher;
        BackgroundManager manager(dispatcher);
        manager.applyBackground(palette.style, cover);
        dispatcher.runUntilIdle();
        EXPECT_EQ(palette.gradientColors, manager.gradientColors());
        EXPECT_EQ(palette.darkGradientColors, manager.darkGradientColors());
        EXPECT_EQ(palette.dynamicTextColor, manager.dynamicTextColor());
    }
}

} // namespace tarnwick
