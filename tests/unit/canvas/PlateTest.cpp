#include "canvas/Plate.h"

#include "canvas/ContinuousCorners.h"

#include <QPainter>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickWindow>
#include <gmock/gmock.h>

#include <numbers>

namespace tarnwick {
namespace {

/// How much is cut off on the diagonal of a corner.
double cutOnDiagonal(const QPainterPath& path) {
    double at = 0;
    while (!path.contains(QPointF(at, at)))
        at += 0.05;
    return at;
}

TEST(ContinuousCorners, CutOffWhatAnArcCutsOffButBeginEarlier) {
    const QRectF rect(0, 0, 300, 200);
    QPainterPath arcs;
    arcs.addRoundedRect(rect, 40, 40);
    const QPainterPath path = continuousRectangle(rect, 40);
    EXPECT_NEAR(cutOnDiagonal(path), cutOnDiagonal(arcs), 0.2);
    EXPECT_TRUE(arcs.contains(QPointF(45, 0.1)));
    EXPECT_FALSE(path.contains(QPointF(45, 0.1))) << "it leaves the side before the arc does";
    EXPECT_TRUE(path.contains(QPointF(65, 0.1)));
    for (const QPointF& corner : {QPointF(9, 9), QPointF(291, 9), QPointF(291, 191), QPointF(9, 191)})
        EXPECT_FALSE(path.contains(corner));
    EXPECT_EQ(path.boundingRect(), rect);
    EXPECT_EQ(continuousRectangle(rect, 0).boundingRect(), rect);
}

TEST(ContinuousCorners, AreRoundWhereThereIsNoRoom) {
    const QPainterPath circle = continuousRectangle({0, 0, 100, 100}, 80);
    for (int degrees = 0; degrees < 360; degrees += 7) {
        const QPointF way = QLineF::fromPolar(1, degrees).p2();
        EXPECT_TRUE(circle.contains(QPointF(50, 50) + 49.5 * way)) << degrees;
        EXPECT_FALSE(circle.contains(QPointF(50, 50) + 50.2 * way)) << degrees;
    }
}

TEST(Plate, IsWholeAndTheSameOnAllSidesBetweenTwoPixelsToo) {
    QQuickRenderControl control;
    QQuickWindow window(&control);
    QImage picture(60, 60, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    window.setColor(Qt::white);
    window.setRenderTarget(QQuickRenderTarget::fromPaintDevice(&picture));
    window.resize(60, 60);
    Plate plate;
    plate.setParentItem(window.contentItem());
    plate.setPosition({5.5, 3.4});
    plate.setSize({21, 21});
    plate.setProperty("radius", 5.25);
    plate.setProperty("color", QColor(Qt::white));
    plate.setProperty("borderColor", QColor(Qt::black));
    plate.setProperty("borderWidth", 1);
    control.polishItems();
    control.beginFrame();
    control.sync();
    control.render();
    control.endFrame();
    QRect inked;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 60; ++x)
            if (picture.pixelColor(x, y).lightness() < 200)
                inked |= QRect(x, y, 1, 1);
    EXPECT_EQ(inked.size(), QSize(21, 21));
    const QImage box = picture.copy(inked);
    for (const QImage& turned :
         {box.mirrored(true, false), box.mirrored(false, true), box.transformed({0, 1, 1, 0, 0, 0})}) {
        int largest = 0;
        for (int y = 0; y < 21; ++y)
            for (int x = 0; x < 21; ++x)
                largest = std::max(largest, std::abs(box.pixelColor(x, y).lightness() -
                                                     turned.pixelColor(x, y).lightness()));
        EXPECT_LE(largest, 12);
    }
    EXPECT_EQ(box.pixelColor(10, 0).lightness(), 0);
    EXPECT_EQ(box.pixelColor(10, 4).lightness(), 255);
}

} // namespace
} // namespace tarnwick
