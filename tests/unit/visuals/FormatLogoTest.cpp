#include "visuals/FormatLogo.h"

#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/Pictures.h"
#include "visuals/DockIcon.h"

#include <gtest/gtest.h>

namespace tarnwick {

TEST(FormatLogo, IsWhiteOverWhiteTextAlone) {
    for (const char* code : {"alac", "mp3", "flac", "wav", "aac"}) {
        const auto white = formatLogoName(QLatin1String(code), colours::white);
        const auto black = formatLogoName(QLatin1String(code), colours::grey);
        ASSERT_TRUE(white && black);
        EXPECT_EQ(*white, QLatin1String(code) + QStringLiteral("-white"));
        EXPECT_EQ(*black, QLatin1String(code) + QStringLiteral("-black"));
        EXPECT_TRUE(Catalogue::shared().contains(*white) && Catalogue::shared().contains(*black));
    }
    for (const char* code : {"aiff", "unknown", "", "MP3"})
        EXPECT_FALSE(formatLogoName(QLatin1String(code), colours::white)) << code;
}

namespace {

class DockIconTest : public testing::Test {
protected:
    QImage apply(const std::optional<images::Image>& cover, bool enabled, const Catalogue& catalogue) {
        QImage icon;
        DockIcon dock(dispatcher, catalogue, [&](const QImage& shown) { icon = shown; });
        dock.applyDockIcon(cover, enabled);
        dispatcher.runUntilIdle();
        return icon;
    }

    dispatch::VirtualDispatcher dispatcher;
    const Catalogue none{QStringLiteral(":/nowhere")};
};

} // namespace

TEST_F(DockIconTest, ShowsTheCoverWithRoundCorners) {
    const QImage icon = apply(plainCover(Qt::red, {40, 20}), true, Catalogue::shared());
    ASSERT_EQ(icon.size(), QSize(128, 128));
    EXPECT_EQ(icon.pixelColor(64, 64), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(64, 0), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(17, 0), QColor(Qt::red));
    EXPECT_EQ(icon.pixelColor(3, 3).alpha(), 0);
}

TEST_F(DockIconTest, ShowsTheProgramsOwnIconOtherwise) {
    const QImage own = *Catalogue::shared().picture(QStringLiteral("AppIcon"), {256, 256});
    EXPECT_EQ(apply(std::nullopt, true, Catalogue::shared()), own);
    EXPECT_EQ(apply(plainCover(Qt::red, {40, 20}), false, Catalogue::shared()), own);
    EXPECT_TRUE(apply(std::nullopt, true, none).isNull());
    EXPECT_FALSE(apply(plainCover(Qt::red, {40, 20}), true, none).isNull());
}

TEST_F(DockIconTest, TheLastOfSeveralCounts) {
    QList<QColor> shown;
    {
        DockIcon dock(dispatcher, Catalogue::shared(),
                      [&](const QImage& icon) { shown.append(icon.pixelColor(64, 64)); });
        dock.applyDockIcon(plainCover(Qt::red, {40, 20}), true);
        dock.applyDockIcon(plainCover(Qt::blue, {40, 20}), true);
        dispatcher.runUntilIdle();
        dock.applyDockIcon(plainCover(Qt::green, {40, 20}), true);
    }
    dispatcher.runUntilIdle();
    EXPECT_EQ(shown, QList<QColor>{QColor(Qt::blue)});
}

} // namespace tarnwick
