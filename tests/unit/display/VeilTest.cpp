#include "display/panel/Legibility.h"
#include "display/veil/ColourBackground.h"
#include "display/veil/Veils.h"
#include "tests/fakes/Pictures.h"

#include <gmock/gmock.h>

#include <cmath>

namespace tarnwick {
namespace {

TEST(VeilField, GivesWhatIsNeededAndFadesOutWithoutAnEdge) {
    VeilField field({1200, 600});
    for (int column = 100; column < 120; ++column)
        field.need(column, 30, 0.6);
    field.need(-1, 5, 1);
    field.need(5, 10000, 1);
    field.spread(120);
    for (int column = 100; column < 120; ++column)
        EXPECT_GE(field.at(column * 8 + 1, 30 * 8 + 7), 0.6 - 1e-6);
    double before = 0;
    for (double y = 0; y < 600; y += 2) {
        const double alpha = field.at(880, y);
        EXPECT_LE(std::abs(alpha - before), 0.04) << y;
        before = alpha;
    }
    EXPECT_NEAR(field.at(880, 30 * 8 + 200), 0, 1e-6);
}

VeilScene scene() {
    VeilScene scene;
    scene.window = {1200, 600};
    scene.background = {{0.9, 0.9, 0.92, 1}, {0.9, 0.9, 0.92, 0.5}};
    scene.text = colours::black;
    scene.lines = {{{860, 60, 300, 27}, 4.5}, {{700, 100, 460, 27}, 4.5}};
    return scene;
}

TEST(Veils, AreLeftOutWhereTheContrastIsThere) {
    const Veils veils = makeVeils(scene());
    EXPECT_TRUE(veils.background.picture.isNull());
    EXPECT_TRUE(veils.record.picture.isNull());
    EXPECT_TRUE(veils.cover.picture.isNull());
    VeilScene listed = scene();
    listed.list = {0, 0, 600, 600};
    EXPECT_GT(makeVeils(listed).rowAlpha, 0.2) << "black on grey needs it";
    listed.text = colours::white;
    listed.background = {colours::black, colours::black};
    EXPECT_EQ(makeVeils(listed).rowAlpha, 0);
}

TEST(Veils, AreClippedToTheOutlineOfTheirSurface) {
    VeilScene black = scene();
    black.record = DiscImage::of(plainCover(Qt::black));
    black.recordCentre = {600, 300};
    black.recordDiameter = 600;
    const VeilPicture veil = makeVeils(black).record;
    ASSERT_FALSE(veil.picture.isNull());
    EXPECT_GT(veil.strongest, 0.3);
    const double scale = veil.picture.width() / (veil.place.width() * 600);
    EXPECT_NEAR(scale, 1, 0.001);
    for (int y = 0; y < veil.picture.height(); ++y) {
        for (int x = 0; x < veil.picture.width(); ++x) {
            const double distance =
                std::hypot(veil.place.x() * 600 + x + 0.5 - 300, veil.place.y() * 600 + y + 0.5 - 300);
            if (distance > 301) {
                ASSERT_EQ(qAlpha(veil.picture.pixel(x, y)), 0) << x << ", " << y;
            }
        }
    }
}

TEST(Veils, LookAtTheCoverAndAtACassette) {
    VeilScene covered = scene();
    covered.cover = plainCover(Qt::black);
    covered.coverPlace = {400, 0, 600, 600};
    covered.cassette = plainCover(Qt::darkBlue);
    covered.cassettePlace = {300, 100, 600, 400};
    covered.pixelRatio = 2;
    const Veils veils = makeVeils(covered);
    EXPECT_GT(veils.cover.strongest, 0.3);
    EXPECT_NEAR(veils.cover.picture.width(), 2 * 600 * veils.cover.place.width(), 2);
    EXPECT_GT(veils.record.strongest, 0.3);
}

TEST(ColourBackground, HasNoStepsAndTheMeanOfItsColours) {
    ColourBackground background;
    background.setColors({QColor(20, 24, 40), QColor(10, 12, 20)});
    const QImage strip = background.strip(2160);
    int alike = 0;
    int longest = 0;
    for (int y = 1; y < strip.height(); ++y) {
        bool isAlike = true;
        double sum = 0;
        for (int x = 0; x < strip.width(); ++x) {
            isAlike = isAlike && strip.pixel(x, y) == strip.pixel(x, y - 1);
            sum += qBlue(strip.pixel(x, y));
        }
        alike = isAlike ? alike + 1 : 0;
        longest = std::max(longest, alike);
        ASSERT_NEAR(sum / strip.width(), 40 - 20 * (y + 0.5) / strip.height(), 0.5) << y;
    }
    EXPECT_LE(longest, 12) << "a level is 108 rows high";
}

TEST(Veils, PaintTheBackgroundFromTopToBottom) {
    const std::vector<Colour> three{colours::black, colours::white, colours::black};
    EXPECT_EQ(gradientAt(three, colours::white, 0.5), colours::white);
    EXPECT_NEAR(gradientAt(three, colours::white, 0.75).red, 0.5, 1e-9);
    EXPECT_NEAR(gradientAt({{0, 0, 0, 1}, {0, 0, 0, 0.5}}, colours::white, 1).green, 0.5, 1e-9);
    EXPECT_EQ(gradientAt({}, colours::white, 0.3), colours::white);
}

} // namespace
} // namespace tarnwick
