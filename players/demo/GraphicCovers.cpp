#include "players/demo/GraphicCovers.h"

#include "players/demo/CoverCanvas.h"

#include <QPainterPath>
#include <QPolygonF>

#include <array>
#include <cmath>

// They have nothing in common but the canvas.

namespace tarnwick::players {

QImage paintShapes() {
    CoverCanvas canvas(coverSide);
    const QColor navy(0x12, 0x3a, 0x5c);
    const QColor red(0xe2, 0x4a, 0x33);
    const QColor yellow(0xf5, 0xc8, 0x5c);
    const QColor paper(0xf3, 0xec, 0xe0);
    QPainter& painter = canvas.painter();
    painter.fillRect(QRectF(0, 0, 1, 1), navy);
    painter.fillRect(QRectF(0, 0, 0.5, 0.5), red);
    painter.setBrush(paper);
    painter.drawPolygon(QPolygonF({{1, 0.5}, {1, 1}, {0.5, 1}}));
    painter.drawEllipse(QPointF(0.83, 0.17), 0.088, 0.088);
    painter.setBrush(yellow);
    painter.drawEllipse(QPointF(0.5, 0.5), 0.25, 0.25);
    painter.setBrush(navy);
    painter.drawPie(QRectF(0.25, 0.25, 0.5, 0.5), 90 * 16, 90 * 16);
    painter.setBrush(red);
    painter.drawPie(QRectF(0.375, 0.375, 0.25, 0.25), 270 * 16, 90 * 16);
    for (int bar = 0; bar < 5; ++bar)
        painter.fillRect(QRectF(0.06, 0.60 + bar * 0.045, 0.13, 0.016), paper);
    canvas.type(QStringLiteral("QUADRI"), {0.058, 0.935}, 0.054, QFont::ExtraBold, yellow, 0.01);
    return canvas.finish();
}

QImage paintCrossing() {
    CoverCanvas canvas(coverSide);
    QPainter& painter = canvas.painter();
    painter.fillRect(QRectF(0, 0, 1, 1), Qt::black);
    painter.save();
    painter.setBrush(Qt::white);
    // A street crossing, seen from the pavement.
    for (int bar = -3; bar < 8; ++bar) {
        const double near = 0.135 * bar;
        const double far = 0.5 + (near - 0.36) * 0.42;
        painter.drawPolygon(QPolygonF({{far, 0.36}, {far + 0.032, 0.36}, {near + 0.076, 1.0}, {near, 1.0}}));
    }
    painter.setBrush(QColor(0xff, 0xd4, 0x1f));
    painter.drawEllipse(QPointF(0.775, 0.735), 0.115, 0.115);
    painter.restore();
    canvas.type(QStringLiteral("STRADE"), {0.052, 0.180}, 0.134, QFont::Black, Qt::white, -0.035);
    canvas.type(QStringLiteral("D’EUROPA"), {0.058, 0.285}, 0.072, QFont::Black, QColor(0xff, 0xd4, 0x1f),
                -0.015);
    canvas.type(QStringLiteral("12 CITTÀ"), {0.945, 0.285}, 0.022, QFont::Bold, Qt::white, 0.08,
                Qt::AlignRight);
    return canvas.finish();
}

QImage paintTypography() {
    CoverCanvas canvas(coverSide);
    QPainter& painter = canvas.painter();
    const QColor ground(0xe8, 0x2f, 0x5b);
    const QColor ink(0xff, 0xd9, 0xc2);
    painter.fillRect(QRectF(0, 0, 1, 1), ground);
    painter.setBrush(Qt::NoBrush);
    for (int ring = 0; ring < 16; ++ring) {
        const double radius = 0.10 + ring * 0.048;
        painter.setPen(QPen(QColor(0xb3, 0x12, 0x4a, 220 - ring * 11), 0.013));
        painter.drawArc(QRectF(1 - radius, 1 - radius, 2 * radius, 2 * radius), 90 * 16, 90 * 16);
    }
    const std::array<const char*, 6> lines{"se il vento",    "gira prima", "di sera, chi",
                                           "resta sul molo", "conta le",   "barche"};
    double y = 0.155;
    for (const char* line : lines) {
        canvas.type(QString::fromUtf8(line), {0.060, y}, 0.083, QFont::Bold, ink, -0.035);
        y += 0.122;
    }
    canvas.type(QStringLiteral("Coro e Banda di San Giacomo"), {0.064, 0.945}, 0.022, QFont::Medium, ink);
    return canvas.finish();
}

QImage paintStripes() {
    CoverCanvas canvas(coverSide);
    canvas.shade([](double x, double y) {
        return Tint(0xf1e2c6) * (0.96 + 0.06 * noise(x * 140, y * 140, 2, 3)) *
               (1 - 0.10 * smoothStep(0.35, 0.75, std::hypot(x - 0.5, y - 0.5)));
    });
    QPainter& painter = canvas.painter();
    // From the outside in, each reaching far under the next, so that no ground shows between them; in
    // pixels, since a stroke is made of lines whose number does not follow the painter's scale.
    painter.save();
    painter.resetTransform();
    painter.setBrush(Qt::NoBrush);
    constexpr std::array<QRgb, 5> colours{0x5b2a1d, 0xa63d22, 0xd9692b, 0xeca13a, 0x3d7f78};
    constexpr double width = 0.062;
    for (std::size_t stripe = 0; stripe < colours.size(); ++stripe) {
        const double reach = stripe + 1 < colours.size() ? width / 2 : 0;
        const double offset = static_cast<double>(stripe) * width + reach / 2;
        QPainterPath path(QPointF(-0.1, 0.40 + offset));
        path.lineTo(0.34, 0.40 + offset);
        const double radius = 0.36 - offset;
        path.arcTo(QRectF(0.34 - radius, 0.40 + offset, 2 * radius, 2 * radius), 90, -90);
        path.lineTo(0.34 + radius, 1.1);
        painter.setPen(
            QPen(QColor::fromRgb(colours[stripe]), (width + reach) * coverSide, Qt::SolidLine, Qt::FlatCap));
        painter.drawPath(QTransform::fromScale(coverSide, coverSide).map(path));
    }
    painter.restore();
    const QColor ink(0x5b, 0x2a, 0x1d);
    canvas.type(QStringLiteral("nastro del"), {0.062, 0.150}, 0.080, QFont::ExtraBold, ink, -0.04);
    canvas.type(QStringLiteral("sabato"), {0.062, 0.262}, 0.080, QFont::ExtraBold, ink, -0.04);
    canvas.type(QStringLiteral("duo ginestra"), {0.940, 0.150}, 0.024, QFont::Medium, ink, 0, Qt::AlignRight);
    return canvas.finish();
}

} // namespace tarnwick::players
