#include "visuals/Colour.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarnwick {

TEST(Colour, LuminanceAndTextColour) {
    struct Row {
        Colour background;
        double luminance;
        Colour text;
    };
    const Row rows[]{
        {colours::black, 0.0, colours::white},
        {colours::white, 1.0, colours::black},
        {colours::grey, 0.2140, colours::black},
        {{1, 0, 0, 1}, 0.2126, colours::black},
        {{0, 0, 1, 1}, 0.0722, colours::white},
        {{0.02, 0.02, 0.02, 0.1}, 0.02 / 12.92, colours::white}, // the linear foot; alpha does not count
    };
    for (const Row& row : rows) {
        EXPECT_NEAR(relativeLuminance(row.background), row.luminance, 5e-5);
        EXPECT_EQ(contrastingTextColor(row.background), row.text) << row.luminance;
    }
}

TEST(Colour, TextTurnsWhereBothContrastsAreEqual) {
    const double turn = std::sqrt(0.0525) - 0.05;
    const auto greyOf = [](double luminance) {
        const double v = 1.055 * std::pow(luminance, 1 / 2.4) - 0.055;
        return Colour{v, v, v, 1};
    };
    EXPECT_EQ(contrastingTextColor(greyOf(turn - 1e-6)), colours::white);
    EXPECT_EQ(contrastingTextColor(greyOf(turn + 1e-6)), colours::black);
}

TEST(Colour, ChangesKeepWhatTheyMustKeep) {
    EXPECT_EQ(darkenColor({0.5, 1, 0, 0.7}, 0.3), (Colour{0.15, 0.3, 0, 0.7}));
    EXPECT_EQ(brightenColor({0.5, 0.9, 0, 0.7}), (Colour{0.65, 1, 0, 0.7}));
    EXPECT_EQ(saturateColor({0.4, 0.4, 0.4, 1}, 2.5), (Colour{0.4, 0.4, 0.4, 1}));
    // Saturation 0.25 becomes 0.625; the middle component keeps its place between the outer two.
    const Colour stronger = saturateColor({0.8, 0.7, 0.6, 0.5}, 2.5);
    EXPECT_NEAR(stronger.red, 0.8, 1e-12);
    EXPECT_NEAR(stronger.green, 0.55, 1e-12);
    EXPECT_NEAR(stronger.blue, 0.3, 1e-12);
    EXPECT_EQ(stronger.alpha, 0.5);
    EXPECT_NEAR(saturateColor({0.2, 0.9, 0.4, 1}, 2.5).red, 0.0, 1e-12);
}

} // namespace tarnwick
