#include "assets/ContactSheet.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(ContactSheet, ShowsItsWholeContentWithTypeThatCanBeRead) {
    const Catalogue& catalogue = Catalogue::shared();
    const QSize whole = contactSheetSize(catalogue);
    const QImage sheet = contactSheet(catalogue, whole);
    ASSERT_EQ(sheet.size(), whole);
    const auto isEmpty = [&](const QRect& part) {
        const QRgb ground = sheet.pixel(0, 0);
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x)
                if (sheet.pixel(x, y) != ground)
                    return false;
        return true;
    };
    EXPECT_TRUE(isEmpty({0, 0, 6, whole.height()}) && isEmpty({whole.width() - 6, 0, 6, whole.height()}))
        << "no name is cut off";
    EXPECT_TRUE(isEmpty({0, whole.height() - 10, whole.width(), 10}));
    EXPECT_FALSE(isEmpty({0, whole.height() - 100, whole.width(), 90})) << "and nothing is left empty";
}

} // namespace
} // namespace tarnwick
