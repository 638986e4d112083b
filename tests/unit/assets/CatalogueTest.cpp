#include "assets/Catalogue.h"

#include <gtest/gtest.h>

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
