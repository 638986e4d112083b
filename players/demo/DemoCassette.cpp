#include "players/demo/DemoCassette.h"

#include "players/demo/PictureEncoding.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>

#include <array>

namespace tarnwick::players {

namespace {

void drawShell(QPainter& painter) {
    QLinearGradient shell(0, 0, 0, 900);
    shell.setColorAt(0, QColor(0x3a, 0x39, 0x3d));
    shell.setColorAt(0.08, QColor(0x2b, 0x2a, 0x2e));
    shell.setColorAt(1, QColor(0x1b, 0x1a, 0x1d));
    painter.setBrush(shell);
    painter.drawRoundedRect(QRectF(10, 10, 1380, 880), 46, 46);
    painter.setBrush(QColor(255, 255, 255, 18));
    painter.drawRoundedRect(QRectF(56, 10, 1288, 8), 4, 4); // between the corners
}

void drawLabel(QPainter& painter) {
    QPainterPath label;
    label.addRoundedRect(QRectF(85, 75, 1230, 590), 34, 34);
    painter.setClipPath(label);
    painter.fillRect(QRectF(85, 75, 1230, 590), QColor(0xf1, 0xe6, 0xd0));
    constexpr std::array<QRgb, 4> bands{0xa63d22, 0xd9692b, 0xeca13a, 0x3d7f78};
    for (std::size_t band = 0; band < bands.size(); ++band)
        painter.fillRect(QRectF(85, 470 + 40.0 * static_cast<double>(band), 1230, 40),
                         QColor::fromRgb(bands[band]));
    painter.setPen(QPen(QColor(0x5b, 0x2a, 0x1d, 120), 3));
    painter.drawLine(QPointF(230, 165), QPointF(1250, 165));
    painter.drawLine(QPointF(230, 225), QPointF(1250, 225));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x5b, 0x2a, 0x1d));
    painter.drawRoundedRect(QRectF(130, 120, 70, 70), 12, 12);
    painter.setClipping(false);
}

void drawReels(QPainter& painter) {
    painter.setBrush(QColor(0x17, 0x16, 0x19));
    painter.drawRoundedRect(QRectF(300, 285, 800, 250), 125, 125);
    painter.setBrush(QColor(0x2e, 0x24, 0x20));
    painter.drawRoundedRect(QRectF(560, 325, 280, 170), 14, 14);
    QRadialGradient wound(QPointF(425, 410), 250);
    wound.setColorAt(0, QColor(0x4a, 0x36, 0x2c));
    wound.setColorAt(1, QColor(0x33, 0x25, 0x1f));
    painter.setClipRect(QRectF(560, 325, 280, 170));
    painter.setBrush(wound);
    painter.drawEllipse(QPointF(425, 410), 225, 225);
    painter.setClipping(false);
    for (const double x : {425.0, 975.0}) {
        painter.setBrush(QColor(0xe9, 0xe4, 0xda));
        painter.drawEllipse(QPointF(x, 410), 92, 92);
        painter.setBrush(QColor(0x17, 0x16, 0x19));
        painter.drawEllipse(QPointF(x, 410), 62, 62);
        painter.setBrush(QColor(0xe9, 0xe4, 0xda));
        for (int tooth = 0; tooth < 6; ++tooth) {
            painter.save();
            painter.translate(x, 410);
            painter.rotate(60.0 * tooth + 12);
            painter.drawRect(QRectF(-9, -66, 18, 24));
            painter.restore();
        }
    }
}

void drawFoot(QPainter& painter) {
    painter.setBrush(QColor(0x24, 0x23, 0x27));
    painter.drawPolygon(QPolygonF({{270, 890}, {310, 700}, {1090, 700}, {1130, 890}}));
    painter.setBrush(QColor(0x0d, 0x0d, 0x0f));
    for (const double x : {420.0, 560.0, 840.0, 980.0})
        painter.drawEllipse(QPointF(x, 815), 26, 26);
}

void drawScrews(QPainter& painter) {
    for (const QPointF screw : {QPointF(55, 55), QPointF(1345, 55), QPointF(55, 845), QPointF(1345, 845)}) {
        painter.setBrush(QColor(0x77, 0x75, 0x78));
        painter.drawEllipse(screw, 17, 17);
        painter.setPen(QPen(QColor(0x2c, 0x2b, 0x2e), 4));
        painter.drawLine(screw - QPointF(10, 6), screw + QPointF(10, 6));
        painter.setPen(Qt::NoPen);
    }
}

} // namespace

QByteArray paintCassette() {
    QImage picture(1400, 900, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    drawShell(painter);
    drawLabel(painter);
    drawReels(painter);
    drawFoot(painter);
    drawScrews(painter);
    painter.end();
    return encodeDrawing(picture);
}

} // namespace tarnwick::players
