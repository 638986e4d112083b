#include "canvas/type/TypeItem.h"
#include "display/pictures/CutPictureItem.h"
#include "tests/unit/display/SceneFixture.h"

#include <cmath>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

bool isWhole(double value) { return std::abs(value - std::round(value)) < 1e-3; } // turns are of floats

class WholePixelsTest : public SceneFixture {
protected:
    /// Whether what is shown of the covers and the rows lies on whole pixels.
    void expectWholePixels() {
        int covers = 0;
        rows = 0;
        for (const QQuickItem* item : itemsBelow(renderer->root())) {
            const auto* cover = qobject_cast<const CutPictureItem*>(item);
            if (const auto* type = qobject_cast<const TypeItem*>(item); type && item->isVisible())
                expectSharp(*type);
            const bool isRow =
                item->property("discNumber").isValid() && item->property("isHovered").isValid();
            if (!item->isVisible() || !(isRow || (cover && cover->isShown() && !cover->isRound())))
                continue;
            ++(isRow ? rows : covers);
            const QRectF place = item->mapRectToScene(item->boundingRect());
            EXPECT_TRUE(isWhole(place.y()) && isWhole(place.height())) << place.y() << " " << place.height();
            if (cover) {
                EXPECT_TRUE(isWhole(place.x()) && isWhole(place.width()))
                    << place.x() << " " << place.width();
            }
        }
        EXPECT_EQ(covers, 1);
    }

    static void expectSharp(const TypeItem& type) {
        const QQuickItem* picture = type.childItems().constFirst();
        const QRectF place = picture->mapRectToScene(picture->boundingRect());
        EXPECT_TRUE(isWhole(place.x()) && isWhole(place.y()) && isWhole(place.width()))
            << qPrintable(type.text()) << " " << place.x() << " " << place.y();
    }

    int rows = 0;
};

TEST_F(WholePixelsTest, CoversOfAnyShapeAndWhatLiesBelowThem) {
    answer(scripts::tracksByDisc(), discs({{"Uno", "Due"}, {"Tre"}}));
    windows::FakeWindow& window = windows.addWindow();
    for (const QSize cover : {QSize(1000, 994), QSize(994, 1000), QSize(640, 481)}) {
        play(nowPlaying({{1, text(std::to_string(cover.height()).c_str())},
                         {11, D::data(encoded(plainPicture(Qt::red, cover, QImage::Format_RGB32)))}}));
        for (const QSize size : {QSize(1200, 600), QSize(1000, 500), QSize(2560, 1440)}) {
            SCOPED_TRACE(testing::Message() << cover.width() << " in " << size.width());
            if (view->isFullscreen() != (size.width() > 2000))
                window.toggleFullScreen();
            open(size);
            advance(3s);
            expectWholePixels();
            view->tapCover();
            advance(3s);
            expectWholePixels();
            EXPECT_GT(rows, 4);
            view->tapCover();
            advance(3s);
        }
    }
}

} // namespace
} // namespace tarnwick
