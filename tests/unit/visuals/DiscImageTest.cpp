#include "visuals/DiscImage.h"

#include "tests/fakes/Pictures.h"
#include "visuals/GeneratedRecord.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarnwick {

namespace {

DiscImage recordOf(const QString& tag, const QColor& colour, QStringList* log = nullptr,
                   const Catalogue& catalogue = Catalogue::shared()) {
    return makeGeneratedRecord(catalogue, plainCover(colour), tag, standardPrint, [log](const QString& line) {
        if (log)
            log->append(line);
    });
}

/// Whether the pixel at a distance from the middle, to the right, shows the cover's pure green.
bool showsCover(const QImage& disc, double distance) {
    const QColor colour = disc.pixelColor(disc.width() / 2 + int(distance), disc.height() / 2);
    return colour.green() > 240 && colour.red() < 20 && colour.blue() < 20;
}

} // namespace

TEST(DiscImage, GeneratedRecordsShowTheCoverInARing) {
    struct Row {
        const char* tag;
        double hole;  ///< radius inside which the disc is seen, of 300
        double inset; ///< of the ring from the edge
    };
    const Row rows[]{{"cddefault", 30, 5},        {"R2RSony", 30, 5},      {"33Vinyl", 6, 98},
                     {"33Transparent", 6, 98},    {"45Vinyl", 6, 69},      {"45RedFlexy", 6, 69},
                     {"45YellowJukebox", 33, 75}, {"RTM-LPR90", 24, 106.5}};
    constexpr int side = 600; // twice as many pixels as points
    for (const Row& row : rows) {
        const auto disc = recordOf(QLatin1String(row.tag), Qt::green).render(side);
        ASSERT_TRUE(disc) << row.tag;
        EXPECT_FALSE(showsCover(*disc, 2 * row.hole - 3)) << row.tag;
        EXPECT_TRUE(showsCover(*disc, 2 * row.hole + 3)) << row.tag;
        EXPECT_TRUE(showsCover(*disc, 2 * (150 - row.inset) - 3)) << row.tag;
        EXPECT_FALSE(showsCover(*disc, std::min(2 * (150 - row.inset) + 3, 299.0))) << row.tag;
    }
}

TEST(DiscImage, ATagWithoutABaseGivesNoRecord) {
    QStringList log;
    EXPECT_TRUE(recordOf(QStringLiteral("no such disc"), Qt::green, &log).isNull());
    EXPECT_TRUE(recordOf(QString(), Qt::green, &log).isNull());
    EXPECT_TRUE(log.isEmpty());
    const Catalogue empty(QStringLiteral(":/nowhere"));
    EXPECT_TRUE(recordOf(QStringLiteral("cddefault"), Qt::green, &log, empty).isNull());
    EXPECT_EQ(log, QStringList{QStringLiteral("Errore: Immagine di base cdblank non trovata negli asset.")});
}

TEST(DiscImage, IsEqualWhenItDescribesTheSame) {
    const auto green = plainCover(Qt::green);
    const auto base = DiscImage::named(Catalogue::shared(), QStringLiteral("33Vinyl"));
    EXPECT_EQ(base, DiscImage::named(Catalogue::shared(), QStringLiteral("33Vinyl")));
    EXPECT_EQ(base.name(), QLatin1String("33Vinyl"));
    EXPECT_EQ(DiscImage::printed(base, green, standardPrint), DiscImage::printed(base, green, standardPrint));
    EXPECT_FALSE(DiscImage::printed(base, green, standardPrint) ==
                 DiscImage::printed(base, plainCover(Qt::green), standardPrint));
    EXPECT_FALSE(base == DiscImage());
    EXPECT_EQ(DiscImage(), DiscImage::named(Catalogue::shared(), QStringLiteral("none")));
    EXPECT_EQ(DiscImage::printed(base, green, standardPrint).name(), QString());
}

TEST(DiscImage, ForeignPicturesAreClippedToACircle) {
    const auto disc = DiscImage::of(plainCover(Qt::red, {40, 20})).render(100);
    ASSERT_TRUE(disc);
    EXPECT_EQ(disc->pixelColor(50, 50), QColor(Qt::red));
    EXPECT_EQ(disc->pixelColor(50, 2), QColor(Qt::red));
    EXPECT_EQ(disc->pixelColor(8, 8).alpha(), 0);
    EXPECT_EQ(disc->pixelColor(50, 0).alpha(), 0);
    EXPECT_EQ(DiscImage::of(plainCover(Qt::red)).render(0), nullptr);
    EXPECT_EQ(DiscImage().render(100), nullptr);
}

} // namespace tarnwick
