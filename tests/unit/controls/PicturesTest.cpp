#include "tests/fakes/Pictures.h"

#include "controls/bar/Frost.h"
#include "controls/picker/PickerColours.h"
#include "controls/picker/PopoverPainter.h"
#include "visuals/Colour.h"

#include <QPainter>
#include <gmock/gmock.h>

namespace tarnwick {
namespace {

Backdrop::Picture plain(const QColor& colour) {
    return [picture = std::make_shared<QImage>(plainPicture(
                colour, {64, 64}, QImage::Format_ARGB32_Premultiplied))](int) { return picture; };
}

Backdrop darkWindow() {
    Backdrop backdrop;
    backdrop.window = QSizeF(1200, 600);
    backdrop.gradientColors = {Qt::black, Qt::black};
    return backdrop;
}

TEST(Frost, IsOpaqueRoundAtItsCornersAndDarkEnoughForWhiteSymbols) {
    Backdrop backdrop = darkWindow();
    backdrop.cover = plain(QColor(0xf4, 0xf4, 0xf0));
    backdrop.coverRect = QRectF(0, 0, 600, 600);
    const QImage panel = frostedPanel(backdrop, QRectF(370, 430, 460, 140), 22, QSize(920, 280));
    ASSERT_EQ(panel.size(), QSize(920, 280));
    EXPECT_EQ(panel.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(panel.pixelColor(30, 140).alpha(), 255);
    const double white = 1;
    EXPECT_GE(contrastRatio(white, relativeLuminance(Colour::fromQColor(panel.pixelColor(30, 140)))), 6);
    EXPECT_LT(panel.pixelColor(900, 140).lightness(), 30) << "dark where the window is";
    const int middle = panel.pixelColor(460, 140).lightness();
    EXPECT_GT(middle, panel.pixelColor(900, 140).lightness() + 10) << "and the edge between is blurred";
    EXPECT_LT(middle, panel.pixelColor(30, 140).lightness() - 10);
}

TEST(Frost, SeesARecordAsItsMeanOverATurn) {
    auto disc = std::make_shared<QImage>(64, 64, QImage::Format_ARGB32_Premultiplied);
    disc->fill(Qt::red);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 32; ++x)
            disc->setPixelColor(x, y, Qt::blue);
    Backdrop backdrop = darkWindow();
    backdrop.record = [disc](int) { return disc; };
    backdrop.recordCentre = QPointF(600, 300);
    backdrop.recordDiameter = 600;
    const QImage panel = frostedPanel(backdrop, QRectF(500, 250, 200, 100), 22, QSize(200, 100));
    for (const int x : {40, 160})
        EXPECT_NEAR(panel.pixelColor(x, 50).red(), panel.pixelColor(x, 50).blue(), 12) << x;
}

TEST(PickerColours, TheVeilLeavesFourAndAHalfOnCardAndRow) {
    const std::pair<QList<QColor>, QColor> rows[] = {
        {{QColor(0x5b, 0x3b, 0x45), QColor(0x80, 0x70, 0x74)}, Qt::white},
        {{QColor(0x9b, 0xb7, 0xc4), QColor(0xc7, 0xd6, 0xdd)}, Qt::black},
        {{QColor(0x75, 0x75, 0x75)}, Qt::black},
        {{QColor(0x20, 0x40, 0xa0), QColor(0x20, 0x40, 0xa0, 128)}, Qt::white},
    };
    const auto over = [](const QColor& under, const QColor& colour, double alpha) {
        return Colour{under.redF() + (colour.redF() - under.redF()) * alpha,
                      under.greenF() + (colour.greenF() - under.greenF()) * alpha,
                      under.blueF() + (colour.blueF() - under.blueF()) * alpha, 1}
            .toQColor();
    };
    for (const auto& [gradient, text] : rows) {
        const QColor veil = pickerVeil(gradient, text);
        const double textLuminance = relativeLuminance(Colour::fromQColor(text));
        for (const QColor& stop : opaqueColours(gradient, text)) {
            EXPECT_EQ(stop.alpha(), 255);
            const QColor card = over(over(stop, veil, veil.alphaF()), text, 0.2);
            for (const QColor& ground : {card, over(card, Qt::white, 0.1)})
                EXPECT_GE(contrastRatio(textLuminance, relativeLuminance(Colour::fromQColor(ground))), 4.45);
        }
    }
    EXPECT_EQ(pickerVeil({Qt::black, Qt::black}, Qt::white).alpha(), 0) << "none where none is needed";
}

TEST(Popover, IsOpaqueInsideWithAShadowAroundAndAnArrowBelow) {
    for (const auto& entry : optionTable<PlaylistBackgroundOption>) {
        const PopoverLook look{entry.option, {Qt::darkCyan, Qt::darkBlue}, Qt::white, true};
        const QImage picture = paintPopover(look, 320, 400, 1);
        const auto at = [&](double x, double y) {
            return picture.pixelColor(int(x + popoverMargin), int(y + popoverMargin));
        };
        EXPECT_EQ(at(160, 200).alpha(), 255) << entry.rawText;
        EXPECT_EQ(at(160, 405).alpha(), 255) << "the arrow";
        EXPECT_GT(at(60, 405).alpha(), 20) << "the shadow";
        EXPECT_LT(at(60, 405).alpha(), 200);
        EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
    }
}

TEST(Popover, ItsPassePartoutCutsARowToTheCardsRoundCorners) {
    PopoverLook look{PlaylistBackgroundOption::IPod, {}, Qt::black, true};
    const QImage ground = paintPopover(look, 320, 400, 2);
    look.isPassePartout = true;
    QImage shown = ground;
    QPainter painter(&shown);
    painter.translate(2 * popoverMargin, 2 * popoverMargin);
    painter.fillRect(QRectF(16, 74, 608, 710), Qt::blue); // a row that fills the whole card
    painter.resetTransform();
    painter.drawImage(0, 0, paintPopover(look, 320, 400, 2));
    painter.end();
    const auto at = [](const QImage& picture, double x, double y) {
        return picture.pixelColor(int(2 * (x + popoverMargin)), int(2 * (y + popoverMargin)));
    };
    for (const double x : {8.5, 311.0}) {
        for (const double y : {37.5, 38.5, 391.0})
            EXPECT_EQ(at(shown, x, y), at(ground, x, y)) << "outside the corner " << x << " " << y;
        EXPECT_EQ(at(shown, x, 200), QColor(Qt::blue)) << "the sides stay";
    }
    EXPECT_EQ(at(shown, 160, 37.5), QColor(Qt::blue));
    EXPECT_EQ(at(shown, 60, 405), at(ground, 60, 405)) << "the shadow outside is not doubled";
}

} // namespace
} // namespace tarnwick
