#include "assets/painter/LabelArt.h"

#include "assets/painter/Geometry.h"
#include "assets/painter/LabelCanvas.h"

#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>

namespace tarnwick::painter {

namespace {

// One function a style: how the print is arranged.

void classic(LabelCanvas& label) {
    label.finePrintRing(0.915, 0.042);
    label.text(label.name(), 0, -0.46, {0.15, 0.145, 0.34});
    label.sides(0);
    label.rows(0.34, 5);
}

void half(LabelCanvas& label) {
    label.painter().setPen(Qt::NoPen);
    label.painter().setBrush(label.accent());
    label.painter().drawPie(QRectF(-1, -1, 2, 2), 180 * 16, 180 * 16);
    label.setPen(label.ink());
    label.finePrintRing(0.915, 0.042);
    label.text(label.name(), 0, -0.44, {0.16, 0.15, 0.34});
    label.sides(-0.10);
    label.rows(0.34, 5);
    label.painter().setPen(QPen(label.ink(), 0.008));
    label.painter().drawLine(QPointF(-0.84, 0), QPointF(-0.17, 0));
    label.painter().drawLine(QPointF(0.17, 0), QPointF(0.84, 0));
}

void band(LabelCanvas& label) {
    label.painter().save();
    QPainterPath disc;
    disc.addEllipse(QPointF(), 1, 1);
    label.painter().setClipPath(disc);
    label.painter().fillRect(QRectF(-1, -0.17, 2, 0.34), label.accent());
    label.painter().restore();
    label.setPen(label.ink());
    label.finePrintRing(0.915, 0.042);
    // Both parts as far from the hole, though one is wider.
    const StrokeType type{0.16, 0.15, 0.34};
    const QString before = label.name().left(4), after = label.name().mid(4);
    constexpr double fromMiddle = 0.19;
    label.text(before, -fromMiddle - strokeWidth(before, type) / 2, 0, type);
    label.text(after, fromMiddle + strokeWidth(after, type) / 2, 0, type);
    label.rows(-0.58, 4);
    label.rows(0.34, 5, 0.05, 0, 60);
}

void ringType(LabelCanvas& label) {
    label.ring(0.89, 0.20, label.accent());
    label.setPen(label.readableOn(label.accent()));
    label.finePrintRing(0.885, 0.062);
    label.setPen(label.ink());
    label.text(label.name(), 0, -0.42, {0.145, 0.145, 0.34});
    label.sides(0, 0.50);
    label.rows(0.30, 5);
    label.ring(0.775, 0.008, label.ink());
}

void mini(LabelCanvas& label) {
    label.text(label.name(), 0, -0.44, {0.085, 0.13, 0.75});
    label.text(label.speed(), 0, 0.48, {0.06, 0.14, 0.5});
}

void bee(LabelCanvas& label) {
    label.painter().save();
    QPainterPath disc;
    disc.addEllipse(QPointF(), 1, 1);
    label.painter().setClipPath(disc);
    label.painter().rotate(24);
    for (int i = -4; i <= 4; ++i)
        label.painter().fillRect(QRectF(i * 0.26 - 0.065, -1.1, 0.13, 2.2), label.ink());
    label.painter().restore();
    label.plate(0.62, 0.018, 0.46);
}

void rays(LabelCanvas& label) {
    label.painter().setPen(Qt::NoPen);
    label.painter().setBrush(label.accent());
    for (int i = 0; i < 24; ++i)
        label.painter().drawPie(QRectF(-1, -1, 2, 2), i * 15 * 16, static_cast<int>(7.5 * 16));
    label.plate(0.60, 0.02, 0.44);
}

void rings(LabelCanvas& label) {
    label.ring(0.965, 0.07, label.ink());
    label.ring(0.86, 0.05, label.ink());
    label.ring(0.775, 0.022, label.ink());
    label.setPen(label.accent());
    label.text(label.name(), 0, -0.38, {0.135, 0.145, 0.34});
    label.sides(0, 0.46);
    label.rows(0.30, 4);
}

void wing(LabelCanvas& label) {
    label.text(label.name(), 0, -0.44, {0.15, 0.145, 0.34});
    label.sides(-0.12);
    for (int i = 0; i < 3; ++i) {
        label.painter().setPen(
            QPen(i == 1 ? label.accent() : label.ink(), 0.075, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        const double y = 0.20 + i * 0.17;
        const double reach = 0.56 - i * 0.11;
        label.painter().setBrush(Qt::NoBrush);
        const std::array points{QPointF(-reach, y - 0.04), QPointF(-0.16, y), QPointF(0, y + 0.13),
                                QPointF(0.16, y), QPointF(reach, y - 0.04)};
        label.painter().drawPolyline(points.data(), static_cast<int>(points.size()));
    }
    label.ring(0.93, 0.008, label.ink());
}

void house(LabelCanvas& label) {
    label.finePrintRing(0.915, 0.042);
    label.painter().setPen(QPen(label.ink(), 0.085, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    const std::array roof{QPointF(-0.58, -0.16), QPointF(0, -0.66), QPointF(0.58, -0.16)};
    label.painter().drawPolyline(roof.data(), static_cast<int>(roof.size()));
    label.painter().fillRect(QRectF(0.27, -0.70, 0.10, 0.24), label.ink());
    label.setPen(label.ink());
    label.text(label.name(), 0, 0.27, {0.15, 0.145, 0.34});
    label.text(label.speed(), -0.56, 0.02, {0.075});
    label.text(QStringLiteral("1"), 0.56, 0.02, {0.075});
    label.rows(0.47, 2);
    label.painter().fillRect(QRectF(-0.46, 0.66, 0.92, 0.065), label.ink());
}

void deck(LabelCanvas& label) {
    label.finePrintRing(0.915, 0.042);
    label.text(label.name(), 0, -0.44, {0.15, 0.145, 0.34});
    for (int i = 0; i < 4; ++i) {
        const double y = 0.16 + i * 0.14;
        const double reach = std::sqrt(0.80 * 0.80 - y * y);
        label.painter().fillRect(QRectF(-reach, y, 2 * reach, 0.045 + 0.012 * i), label.accent());
    }
    label.setPen(label.ink());
    label.sides(-0.12);
}

void juke(LabelCanvas& label) {
    label.ring(0.975, 0.016, label.ink());
    label.ring(0.50, 0.03, label.ink());
    label.setPen(label.ink());
    label.finePrintRing(0.905, 0.036);
    label.textOnCircle(label.name(), 0.70, 0, {0.145, 0.15, 0.34});
    label.textOnCircle(QStringLiteral("45"), 0.70, 180, {0.145, 0.15, 0.34}, true);
    for (const int degrees : {125, 235})
        label.textOnCircle(label.word(degrees), 0.70, degrees, {0.055, 0.14, 0.36}, true);
}

void print(LabelCanvas& label) {
    label.ring(0.455, 0.005, label.ink());
    label.ring(0.905, 0.005, label.ink());
    label.setPen(label.ink());
    label.textOnCircle(label.name(), 0.80, 0, {0.092, 0.13, 0.36});
    label.textOnCircle(QStringLiteral("33 - 45 - 90"), 0.935, 0, {0.026, 0.13, 0.4});
    const auto list = [&](int first, int count) {
        QString line = label.word(first);
        for (int i = 1; i < count; ++i)
            line += QStringLiteral(" - ") + label.word(first + i);
        return line;
    };
    label.textOnCircle(list(80, 6), 0.665, 0, {0.03, 0.13, 0.4});
    label.textOnCircle(list(90, 4), 0.595, 0, {0.03, 0.13, 0.4});
    label.textOnCircle(list(100, 5), 0.93, 180, {0.026, 0.13, 0.4}, true);
    for (int i = 0; i < 5; ++i) {
        const double y = 0.54 + i * 0.055;
        label.text(label.word(110 + i), -0.14, y, {0.026, 0.14, 0.4});
        label.text(label.word(118 + i), 0.14, y, {0.026, 0.14, 0.4});
    }
}

void tapeHub(LabelCanvas& label) {
    label.ring(0.955, 0.03, label.accent());
    label.ring(0.90, 0.012, label.ink());
    label.setPen(label.ink());
    label.textOnCircle(label.name(), 0.735, 0, {0.135, 0.15, 0.34});
    label.setPen(label.accent());
    label.textOnCircle(QStringLiteral("90"), 0.735, 180, {0.17, 0.17, 0.34}, true);
    label.setPen(label.ink());
    for (const int degrees : {90, 270})
        label.textOnCircle(label.word(degrees), 0.75, degrees, {0.06, 0.14, 0.36});
    label.ring(0.58, 0.01, label.ink());
}

void paintStyle(LabelCanvas& label, LabelStyle style) {
    switch (style) {
    case LabelStyle::None:
        break;
    case LabelStyle::Classic:
        classic(label);
        break;
    case LabelStyle::Half:
        half(label);
        break;
    case LabelStyle::Band:
        band(label);
        break;
    case LabelStyle::RingType:
        ringType(label);
        break;
    case LabelStyle::Mini:
        mini(label);
        break;
    case LabelStyle::Bee:
        bee(label);
        break;
    case LabelStyle::Rays:
        rays(label);
        break;
    case LabelStyle::Rings:
        rings(label);
        break;
    case LabelStyle::Wing:
        wing(label);
        break;
    case LabelStyle::House:
        house(label);
        break;
    case LabelStyle::Deck:
        deck(label);
        break;
    case LabelStyle::Juke:
        juke(label);
        break;
    case LabelStyle::Print:
        print(label);
        break;
    case LabelStyle::TapeHub:
        tapeHub(label);
        break;
    }
}

} // namespace

float labelRadius(const Disc& disc) {
    switch (disc.label.style) {
    case LabelStyle::None:
        return 0;
    case LabelStyle::Print:
        return 1;
    case LabelStyle::TapeHub:
        return 0.29F;
    default:
        return disc.zones.label;
    }
}

QImage labelArt(const Disc& disc) {
    if (disc.label.style == LabelStyle::None)
        return {};
    QImage art(side, side, QImage::Format_ARGB32_Premultiplied);
    art.fill(Qt::transparent);
    QPainter painter(&art);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    const double unit = static_cast<double>(radiusInPixels * labelRadius(disc));
    painter.scale(unit, unit);
    LabelCanvas label(painter, disc);
    if (!disc.label.inkOnly && disc.label.style != LabelStyle::Print)
        label.circle(1, label.paper());
    label.setPen(label.ink());
    paintStyle(label, disc.label.style);
    if (!disc.label.inkOnly && label.isDark())
        label.ring(0.988, 0.018, label.edge());
    painter.end();
    return art.convertToFormat(QImage::Format_ARGB32);
}

} // namespace tarnwick::painter
