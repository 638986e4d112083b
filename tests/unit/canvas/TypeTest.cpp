#include "canvas/type/TextInk.h"
#include "canvas/type/TypeItem.h"

#include <QFontDatabase>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <gtest/gtest.h>

#include <cmath>

namespace tarnwick {
namespace {

/// The picture that an item paints for itself, once it is polished.
class TypeTest : public testing::Test {
protected:
    TypeTest() { item->setParentItem(window.contentItem()); }

    QImage painted() {
        control.polishItems();
        const auto* picture = qobject_cast<PictureItem*>(item->childItems().constFirst());
        return picture->picture() ? *picture->picture() : QImage();
    }

    /// Where the painted picture stands, in device pixels.
    QRectF place() const {
        const QQuickItem* picture = item->childItems().constFirst();
        const QRectF points = picture->mapRectToScene(picture->boundingRect());
        return {points.topLeft() * item->pixelRatio(), points.size() * item->pixelRatio()};
    }

    void describe(const QString& text, double points, double ratio = 1, QColor color = Qt::white) {
        QFont font(QStringLiteral("Inter"));
        font.setPointSizeF(points);
        item->setText(text);
        item->setFont(font);
        item->setPixelRatio(ratio);
        item->setColor(color);
    }

    static std::unique_ptr<TypeItem> make() {
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import Tarnwick.Canvas\nTypeItem {}", QUrl());
        std::unique_ptr<QObject> object(component.create());
        return std::unique_ptr<TypeItem>(qobject_cast<TypeItem*>(object.release()));
    }

    QQuickRenderControl control;
    QQuickWindow window{&control};
    std::unique_ptr<TypeItem> item = make();
};

double inkOf(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y));
    }
    return sum;
}

TEST_F(TypeTest, StandsOnWholePixelsWhereverTheItemDoesAndHasGreyEdges) {
    describe(QStringLiteral("Le luci lontane"), 14);
    for (const double ratio : {1.0, 1.5, 2.0}) {
        item->setPixelRatio(ratio);
        for (const QPointF at : {QPointF(10, 20), QPointF(10.3, 20.7), QPointF(0.5, -3.25)}) {
            item->setPosition(at);
            const QImage image = painted();
            const QRectF device = place();
            EXPECT_NEAR(device.left(), std::round(device.left()), 1e-3) << ratio << " " << at.x();
            EXPECT_NEAR(device.top(), std::round(device.top()), 1e-3) << ratio << " " << at.y();
            EXPECT_EQ(device.size().toSize(), image.size());
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QRgb pixel = image.pixel(x, y);
                    ASSERT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel))
                        << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(TypeTest, HasTheInkOfItsSizeWhichMayBeAFraction) {
    describe(QStringLiteral("Lontano"), 20);
    const double white = inkOf(painted());
    describe(QStringLiteral("Lontano"), 20, 2);
    EXPECT_NEAR(inkOf(painted()) / white, 3.7, 0.4) << "thin strokes are a little stronger for their size";
    describe(QStringLiteral("Lontano"), 20, 1, Qt::black);
    EXPECT_GT(inkOf(painted()) / white, 0.7) << "dark edges look wider than light ones";
    describe(QStringLiteral("Lontano"), 9.8);
    const double advance = item->implicitWidth();
    describe(QStringLiteral("Lontano"), 10);
    EXPECT_NEAR(item->implicitWidth() / advance, 10 / 9.8, 1e-3) << "a size may be a fraction";
}

TEST_F(TypeTest, DrawsPicturesForGlyphsWhereThereIsAFontOfThem) {
    if (!QFontDatabase::hasFamily(QStringLiteral("Noto Color Emoji")))
        GTEST_SKIP() << "no such font is installed";
    for (const double points : {9.8, 22.0, 76.0, 150.0}) {
        describe(QStringLiteral("🎵"), points);
        QFont font = item->font();
        font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Color Emoji")});
        item->setFont(font);
        const QImage image = painted();
        int coloured = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                coloured += qRed(image.pixel(x, y)) != qBlue(image.pixel(x, y));
        }
        EXPECT_GT(coloured, 0.1 * points * points) << points;
    }
}

TEST_F(TypeTest, IsPaintedAnewOnlyWhenItIsAnother) {
    describe(QStringLiteral("12:30"), 20);
    painted();
    const int before = item->paintCount();
    item->setText(QStringLiteral("12:30"));
    item->setPosition({7, 3});
    painted();
    EXPECT_EQ(item->paintCount(), before);
    item->setText(QStringLiteral("12:31"));
    painted();
    EXPECT_EQ(item->paintCount(), before + 1);
}

TEST_F(TypeTest, FiguresKeepTheirPlaces) {
    item->setInCells(true);
    describe(QStringLiteral("1:11"), 20);
    const double width = item->implicitWidth();
    describe(QStringLiteral("0:00"), 20);
    EXPECT_EQ(item->implicitWidth(), width);
}

TEST_F(TypeTest, EndsWhereItHasNoRoom) {
    describe(QStringLiteral("Le luci lontane del porto"), 20);
    const double whole = item->implicitWidth();
    item->setElides(true);
    item->setWidth(whole / 2);
    EXPECT_LE(painted().width(), whole / 2 + 5);
    EXPECT_GT(painted().width(), whole / 3);
    item->setWidth(whole + 1);
    EXPECT_GT(painted().width(), whole - 5);
}

TEST(WrappedText, BreaksBetweenWordsLosesNothingAndSaysWhenSomethingIsLeftOut) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(13);
    const struct {
        const char* text;
        double width;
        qsizetype most;
        qsizetype lines;
        bool isWhole;
    } rows[] = {
        {"Short", 300, 3, 1, true},
        {"One line\nand another", 300, 3, 2, true},
        {"The script wanted to tell something that takes more room than one line has", 200, 3, 3, true},
        {"The script wanted to tell something that takes more room than two lines have", 150, 2, 2, false},
        {"Donaudampfschifffahrtsgesellschaftskapitän", 150, 9, 2, true},
        {"a\nb\nc\nd and what follows is far too long to be shown", 100, 3, 3, false},
        {"", 100, 3, 1, true},
    };
    for (const auto& row : rows) {
        const QString text = QString::fromUtf8(row.text);
        const QStringList lines = wrappedToWidth(text, font, row.width, row.most);
        EXPECT_EQ(lines.size(), row.lines) << row.text;
        for (const QString& line : lines)
            EXPECT_LE(measureInk(line, font).ink.width(), row.width + 1) << row.text;
        const auto bare = [](QString some) { return some.remove(u' ').remove(u'\n'); };
        EXPECT_EQ(bare(lines.join(QString())) == bare(text), row.isWhole) << row.text;
        EXPECT_EQ(lines.back().endsWith(u'…'), !row.isWhole) << row.text;
    }
}

} // namespace
} // namespace tarnwick
