#include "assets/Catalogue.h"

#include <QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tarnwick {

TEST(Catalogue, KeepsAPictureWhileItIsInUse) {
    const Catalogue& catalogue = Catalogue::shared();
    auto first = catalogue.picture(QStringLiteral("nocover"), QSize(64, 48));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->size(), QSize(64, 48));
    EXPECT_EQ(catalogue.picture(QStringLiteral("nocover"), QSize(64, 48)), first);
    const std::weak_ptr<const QImage> trace = first;
    first.reset();
    EXPECT_TRUE(trace.expired());
}

TEST(Catalogue, HandsOutOneHandleForAName) {
    const Catalogue& catalogue = Catalogue::shared();
    const auto first = catalogue.image(QStringLiteral("nocover"));
    ASSERT_TRUE(first);
    EXPECT_FALSE(first->isReady());
    EXPECT_EQ(first->pixels().size(), first->size());
    EXPECT_EQ(catalogue.image(QStringLiteral("nocover")), first);
    EXPECT_EQ(catalogue.nameOf(*first), QLatin1String("nocover"));
    EXPECT_EQ(catalogue.nameOf(images::Image::fromPixels(first->pixels())), QString());
}

TEST(Catalogue, EveryPictureCanBeDrawn) {
    const Catalogue& catalogue = Catalogue::shared();
    const std::pair<Catalogue::Kind, int> kinds[]{{Catalogue::Kind::Disc, 28},
                                                  {Catalogue::Kind::Flag, 154},
                                                  {Catalogue::Kind::Logo, 10},
                                                  {Catalogue::Kind::Picture, 3},
                                                  {Catalogue::Kind::Symbol, 15}};
    for (const auto& [kind, count] : kinds) {
        EXPECT_EQ(catalogue.names(kind).size(), count);
        if (kind == Catalogue::Kind::Disc)
            continue; // seconds of decoding; their own test looks at them
        for (const QString& name : catalogue.names(kind)) {
            const auto picture = catalogue.picture(name, QSize(64, 48), Qt::white);
            ASSERT_TRUE(picture) << name.toStdString();
            // Something is drawn in the middle half of every one of them.
            bool drawn = false;
            for (int y = 12; y < 36 && !drawn; ++y) {
                for (int x = 16; x < 48 && !drawn; ++x)
                    drawn = picture->pixelColor(x, y).alpha() > 128;
            }
            EXPECT_TRUE(drawn) << name.toStdString();
        }
    }
}

TEST(Catalogue, FlagsAreDrawnAsTheyWereMeant) {
    // What lies where, as shares of width and height, in flags whose drawings are easily misread.
    const struct {
        const char* flag;
        double x, y;
        QColor colour;
    } rows[]{{"Afghanistan", 0.31, 0.9, QColor(0, 0, 0)},         {"Aland", 0.23, 0.1, QColor(0, 0x53, 0xa5)},
             {"Montenegro", 0.5, 0.03, QColor(0xd3, 0xae, 0x3b)}, {"Georgia", 0.5, 0.1, QColor(255, 0, 0)},
             {"Georgia", 0.1, 0.1, QColor(255, 255, 255)},        {"Georgia", 0.2125, 0.2, QColor(255, 0, 0)},
             {"Honduras", 0.27, 0.42, QColor(8, 0x7b, 0xce)},     {"Italy", 0.1, 0.5, QColor(0, 0x92, 0x46)},
             {"England", 0.5, 0.1, QColor(0xce, 0x11, 0x24)},     {"UK", 0.5, 0.5, QColor(0xcc, 0, 0)}};
    for (const auto& row : rows) {
        const auto picture = Catalogue::shared().picture(QLatin1String(row.flag), QSize(320, 240));
        const QColor there = picture->pixelColor(int(320 * row.x), int(240 * row.y));
        const int difference =
            std::max({std::abs(there.red() - row.colour.red()), std::abs(there.green() - row.colour.green()),
                      std::abs(there.blue() - row.colour.blue())});
        EXPECT_LT(difference, 12) << row.flag << ' ' << qPrintable(there.name());
    }
}

TEST(Catalogue, SymbolsTakeTheirTint) {
    const auto picture =
        Catalogue::shared().picture(QStringLiteral("play.fill"), {48, 48}, QColor(10, 200, 30));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixelColor(22, 24), QColor(10, 200, 30));
    EXPECT_EQ(picture->pixelColor(1, 1).alpha(), 0);
    EXPECT_NE(picture, Catalogue::shared().picture(QStringLiteral("play.fill"), {48, 48}, Qt::white));
}

TEST(Catalogue, TheMarkKeepsItsProportionsInEveryWindow) {
    for (const QSize size : {QSize(1200, 600), QSize(1000, 1000), QSize(400, 900)}) {
        const auto picture = Catalogue::shared().picture(QStringLiteral("applogo800"), size);
        ASSERT_TRUE(picture);
        for (const QPoint corner : {QPoint(0, 0), QPoint(size.width() - 1, 0), QPoint(0, size.height() - 1),
                                    QPoint(size.width() - 1, size.height() - 1)})
            EXPECT_EQ(picture->pixelColor(corner).alpha(), 255);
        // The sleeve, 460 by 480 of 1600 by 800, is red or cream at the left and the record dark at the
        // right.
        const double scale = std::min(size.width() / 1600.0, size.height() / 800.0);
        const double centre = 566.0 / 1600 * size.width();
        const int middle = size.height() / 2;
        EXPECT_GT(picture->pixelColor(int(centre - 330 * scale), middle).red(), 200);
        EXPECT_LT(picture->pixelColor(int(centre + 330 * scale), middle).red(), 60);
    }
}

TEST(Catalogue, TheHubOfACompactDiscStandsOutFromADarkGround) {
    constexpr int side = 400;
    const QColor ground(0x3e, 0x3e, 0x3e);
    for (const char* name : {"cddefault", "cdblank"}) {
        const auto picture = Catalogue::shared().picture(QString::fromLatin1(name), QSize(side, side));
        ASSERT_TRUE(picture);
        QImage shown(side, side, QImage::Format_RGB32);
        shown.fill(ground);
        QPainter(&shown).drawImage(0, 0, *picture);
        double sum = 0;
        int count = 0;
        for (int degrees = 0; degrees < 360; ++degrees) {
            const double angle = degrees * M_PI / 180;
            for (double r = 0.15; r < 0.31; r += 0.01, ++count)
                sum += qGray(shown.pixel(int(side / 2 * (1 + r * std::cos(angle))),
                                         int(side / 2 * (1 + r * std::sin(angle)))));
        }
        EXPECT_GT(sum / count, qGray(ground.rgb()) + 33) << name;
    }
}

TEST(Catalogue, AMissingNameGivesNothing) {
    const Catalogue& catalogue = Catalogue::shared();
    for (const QString& name : {QString(), QStringLiteral("no such picture"), QStringLiteral("NoCover")}) {
        EXPECT_FALSE(catalogue.contains(name));
        EXPECT_FALSE(catalogue.kind(name));
        EXPECT_EQ(catalogue.picture(name, QSize(10, 10)), nullptr);
        EXPECT_FALSE(catalogue.image(name));
        EXPECT_TRUE(catalogue.naturalSize(name).isEmpty());
    }
    EXPECT_EQ(catalogue.picture(QStringLiteral("nocover"), QSize(0, 10)), nullptr);
}

} // namespace tarnwick
