#include "visuals/CoverAnalysis.h"

#include "tests/fakes/Pictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tarnwick {

namespace {

QImage noise(int width, int height, unsigned seed) {
    QImage image(width, height, QImage::Format_RGBA8888);
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width * 4; ++x)
            image.scanLine(y)[x] = static_cast<uchar>(random());
    }
    return image;
}

QImage filled(int width, int height, QRgb colour) {
    return plainPicture(QColor::fromRgba(colour), {width, height});
}

/// The mean of a rectangle, pixel by pixel.
Colour plainMean(const QImage& image, QRect region) {
    double sums[4]{};
    for (int x = region.left(); x <= region.right(); ++x) {
        for (int y = region.top(); y <= region.bottom(); ++y) {
            for (int c = 0; c < 4; ++c)
                sums[c] += image.constScanLine(y)[x * 4 + c] / 255.0;
        }
    }
    const double count = double(region.width()) * region.height();
    return {sums[0] / count, sums[1] / count, sums[2] / count, sums[3] / count};
}

void expectNear(const Colour& actual, const Colour& expected, double tolerance) {
    EXPECT_NEAR(actual.red, expected.red, tolerance);
    EXPECT_NEAR(actual.green, expected.green, tolerance);
    EXPECT_NEAR(actual.blue, expected.blue, tolerance);
}

} // namespace

TEST(CoverAnalysis, MeansOfRegionsAreThoseOfEveryPixelInThem) {
    // Odd sizes end the rows in every remainder of the vector width; the last is longer than one block.
    for (const QSize size : {QSize(1, 1), QSize(7, 5), QSize(37, 41), QSize(2311, 19)}) {
        const QImage image = noise(size.width(), size.height(), 3);
        const Colour mean = *meanColour(image);
        const Colour exact = plainMean(image, image.rect());
        expectNear(mean, exact, 0.5 / 255 + 1e-9);
        EXPECT_NEAR(mean.alpha, exact.alpha, 0.5 / 255 + 1e-9);
        EXPECT_NEAR(mean.red * 255, std::round(mean.red * 255), 1e-9);
    }
    const QImage image = noise(101, 57, 5);
    expectNear(*bottomBandColour(image), plainMean(image, QRect(10, 51, 80, 5)), 1e-12);
    expectNear(*centreColour(image), plainMean(image, QRect(25, 14, 50, 28)), 1e-12);
    EXPECT_EQ(bottomBandColour(image)->alpha, 1.0);
}

TEST(CoverAnalysis, RegionsWithoutAPixelGiveTheFallback) {
    EXPECT_EQ(analyse(BackgroundOption::OneColor, filled(100, 2, 0xffff0000)), fallbackColours());
    EXPECT_EQ(analyse(BackgroundOption::DarkColor, filled(1, 100, 0xffff0000)), fallbackColours());
    for (const auto& entry : optionTable<BackgroundOption>) {
        if (entry.option != BackgroundOption::Black && entry.option != BackgroundOption::White) {
            EXPECT_EQ(analyse(entry.option, QImage()), fallbackColours()) << entry.rawText;
        }
    }
}

TEST(CoverAnalysis, PicturesOfEveryKindAreReadAlike) {
    const QColor rust(200, 80, 40);
    const QImage plain = plainPicture(rust, {60, 60}, QImage::Format_RGB32);
    const QImage covers[]{plain,
                          plainPicture(rust, {12000, 11}, QImage::Format_RGB32),
                          plainPicture(rust, {60, 60}, QImage::Format_ARGB32_Premultiplied),
                          plain.convertToFormat(QImage::Format_Indexed8),
                          plain.convertToFormat(QImage::Format_RGBA64),
                          plain.convertToFormat(QImage::Format_RGB888),
                          plain.convertToFormat(QImage::Format_RGBX64)};
    for (const QImage& cover : covers) {
        const QImage normal = images::normalised(cover);
        const Colour colour{200 / 255.0, 80 / 255.0, 40 / 255.0, 1};
        expectNear(*meanColour(normal), colour, 1e-9);
        expectNear(*centreColour(normal), colour, 1e-9);
        EXPECT_EQ(mostSaturatedColours(normal).size(), 3U) << cover.format();
    }
}

TEST(CoverAnalysis, GradientFadesItsMeanToHalfAlpha) {
    QImage image = filled(2, 1, 0xff000000);
    image.setPixelColor(1, 0, QColor(255, 101, 3, 0)); // straight alpha: the colour counts in full
    const BackgroundColours found = analyse(BackgroundOption::Gradient, image);
    const Colour mean{128 / 255.0, 51 / 255.0, 2 / 255.0, 128 / 255.0};
    ASSERT_EQ(found.gradient.size(), 2U);
    EXPECT_EQ(found.gradient[0], mean);
    EXPECT_EQ(found.gradient[1], (Colour{mean.red, mean.green, mean.blue, 0.5}));
    EXPECT_EQ(found.text, contrastingTextColor(mean));
}

TEST(CoverAnalysis, ShapesTakesFivePointsByLuma) {
    QImage image = filled(60, 30, 0xffffffff);
    image.setPixelColor(10, 5, QColor(100, 0, 0));  // luma 0.117
    image.setPixelColor(50, 5, QColor(0, 200, 0));  // 0.460
    image.setPixelColor(30, 15, QColor(0, 0, 100)); // 0.045
    image.setPixelColor(10, 25, QColor(0, 10, 0));  // 0.023
    image.setPixelColor(50, 25, QColor(90, 90, 90));
    const BackgroundColours found = analyse(BackgroundOption::Shapes, image);
    ASSERT_EQ(found.gradient.size(), 3U);
    expectNear(found.gradient[0], {0, 13 / 255.0, 0, 1}, 1e-12);
    expectNear(found.gradient[1], {0, 1.0, 0, 1}, 1e-12);
    expectNear(found.gradient[2], {0, 0, 130 / 255.0, 1}, 1e-12);
}

TEST(CoverAnalysis, ThreeToneTakesTheMostSaturatedOfTheGrid) {
    QImage image = filled(19, 7, 0xff808080);
    image.setPixelColor(6, 0, QColor(100, 50, 50));    // saturation 0.5
    image.setPixelColor(12, 0, QColor(200, 100, 100)); // the same, but later
    image.setPixelColor(18, 0, QColor(90, 60, 60));    // a third
    image.setPixelColor(0, 6, QColor(0, 0, 100, 12));  // too transparent
    image.setPixelColor(6, 6, QColor(0, 0, 25));       // too dark
    image.setPixelColor(12, 6, QColor(0, 0, 230));     // too bright
    image.setPixelColor(1, 1, QColor(0, 100, 0));      // not on the grid
    EXPECT_EQ(mostSaturatedColours(image), (std::vector<Colour>{{100 / 255.0, 50 / 255.0, 50 / 255.0, 1},
                                                                {200 / 255.0, 100 / 255.0, 100 / 255.0, 1},
                                                                {90 / 255.0, 60 / 255.0, 60 / 255.0, 1}}));
    const BackgroundColours found = analyse(BackgroundOption::ThreeTone, image);
    expectNear(found.gradient[0], {100 / 255.0, 0, 0, 1}, 1e-12); // 0.5 · 2.5 is full saturation
    expectNear(found.gradient[2], {90 / 255.0, 15 / 255.0, 15 / 255.0, 1}, 1e-12);

    image.setPixelColor(0, 6, QColor(0, 0, 100)); // later and more: it moves both equals back by one place
    EXPECT_EQ(mostSaturatedColours(image), (std::vector<Colour>{{0, 0, 100 / 255.0, 1},
                                                                {100 / 255.0, 50 / 255.0, 50 / 255.0, 1},
                                                                {200 / 255.0, 100 / 255.0, 100 / 255.0, 1}}));

    image.setPixelColor(0, 6, Qt::transparent);
    image.setPixelColor(18, 0, QColor(90, 81, 81)); // exactly a tenth is not more than a tenth
    EXPECT_EQ(analyse(BackgroundOption::ThreeTone, image), fallbackColours());
}

} // namespace tarnwick
