#include "platform/musicapp/demo/DemoCovers.h"

#include "platform/musicapp/demo/CoverCanvas.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainterPath>
#include <QRadialGradient>

#include <array>
#include <cmath>
#include <numbers>

// One function a sleeve: they have nothing in common but the canvas.

namespace tarnwick::musicapp {

namespace {

constexpr int side = 1600;

const QColor cream(0xf6, 0xee, 0xdc);

/// The outline of a range of hills: the height at x is around `base`.
double ridge(double x, double base, double height, double scale, quint64 seed) {
    return base - height * (noise(x * scale, 0.5, 4, seed) - 0.5) * 2;
}

QImage dusk() {
    CoverCanvas canvas(side);
    const QPointF sun(0.62, 0.52);
    struct Range {
        double base;
        double height;
        double scale;
        quint64 seed;
        Tint colour;
        double haze;
    };
    const std::array<Range, 5> ranges{{{0.615, 0.05, 2.2, 41, 0x93566a, 0.34},
                                       {0.690, 0.09, 2.8, 12, 0x70425f, 0.22},
                                       {0.775, 0.10, 3.1, 93, 0x4d3057, 0.15},
                                       {0.860, 0.10, 3.6, 54, 0x302446, 0.09},
                                       {0.945, 0.09, 4.4, 75, 0x171628, 0.04}}};
    std::array<std::array<double, side>, ranges.size()> tops{};
    for (std::size_t range = 0; range < ranges.size(); ++range) {
        for (int column = 0; column < side; ++column)
            tops[range][static_cast<std::size_t>(column)] =
                ridge((column + 0.5) / side, ranges[range].base, ranges[range].height, ranges[range].scale,
                      ranges[range].seed);
    }
    canvas.shade(
        [&](double x, double y) {
            const double distance = std::hypot(x - sun.x(), y - sun.y());
            Tint tint = ramp({{0.00, 0x1d2a55},
                              {0.22, 0x46466f},
                              {0.40, 0x8c5f72},
                              {0.52, 0xc9806a},
                              {0.62, 0xe8a06c},
                              {0.70, 0xf2b878}},
                             y);
            // Thin streaks of cloud, lit from below near the horizon.
            const double height = smoothStep(0.10, 0.30, y) * (1 - smoothStep(0.46, 0.60, y));
            const double cloud =
                height > 0 ? height * smoothStep(0.52, 0.80, noise(x * 2.2, y * 15, 4, 7)) : 0;
            tint =
                mix(tint, mix(Tint(0xf0a985), Tint(0x5c4a73), smoothStep(0.1, 0.6, distance)), cloud * 0.55);
            tint = mix(tint, Tint(0xffc27a), 0.85 * std::exp(-distance * 5.2));
            tint = mix(tint, Tint(0xffe6b0), 0.80 * std::exp(-distance * 13));
            tint = mix(Tint(0xfff3d2), tint, smoothStep(0.0735, 0.0765, distance));
            for (std::size_t i = 0; i < ranges.size(); ++i) {
                const Range& range = ranges[i];
                const double top = tops[i][static_cast<std::size_t>(x * side)];
                const double inside = smoothStep(-0.0008, 0.0008, y - top);
                if (inside == 0)
                    continue;
                // Mist gathers at the foot of every range.
                const double mist = range.haze * smoothStep(0.0, 0.16, y - top) +
                                    0.16 * std::exp(-distance * 4) * (1 - range.base);
                tint = mix(tint, mix(range.colour, Tint(0xd98f7c), mist), inside);
            }
            return tint;
        },
        0.012);
    canvas.type(QStringLiteral("Lontano"), {0.066, 0.165}, 0.082, QFont::Light, cream, -0.02);
    canvas.type(QStringLiteral("NEVIA  CORALLO"), {0.070, 0.215}, 0.022, QFont::Medium, cream, 0.05);
    return canvas.finish();
}

QImage sea() {
    CoverCanvas canvas(side);
    canvas.shade(
        [](double x, double y) {
            Tint tint = ramp({{0.0, 0xefe7da}, {0.20, 0xe3e3dc}, {0.36, 0xcfdcdf}, {0.42, 0xc3d6db}}, y);
            const double shore = 0.405 + 0.004 * (noise(x * 3, 0.2, 2, 5) - 0.5);
            const double inside = smoothStep(0.0, 0.05, y - shore);
            if (inside > 0) {
                // Waves shorten towards the horizon.
                const double depth = 1 / (0.06 + (y - shore));
                const double swell = noise(x * depth * 0.85 + 4, depth * 5.0, 4, 21);
                const double glint = smoothStep(0.60, 0.82, noise(x * depth * 2.4, depth * 16.0, 3, 33));
                const Tint water = ramp(
                    {{0.40, 0xb9d2d8}, {0.52, 0x86b3c0}, {0.66, 0x3f879c}, {0.82, 0x12607e}, {1.0, 0x063e5c}},
                    y + 0.16 * (swell - 0.5));
                tint = mix(tint, mix(water, Tint(0xe9f4f4), glint * 0.30), inside);
            }
            // Banks of mist drift over the line between water and sky.
            if (const double near = std::exp(-std::pow((y - 0.44) / 0.10, 2)); near > 0.01) {
                const double bank = smoothStep(0.42, 0.75, noise(x * 1.6 + 2, y * 7, 4, 63));
                tint = mix(tint, Tint(0xf1f1ec), bank * near * 0.75);
            }
            const double sun = std::hypot(x - 0.74, y - 0.23);
            tint = mix(tint, Tint(0xfffaf0), 0.55 * std::exp(-sun * 8));
            return mix(Tint(0xfffdf7), tint, smoothStep(0.0395, 0.0415, sun));
        },
        0.014);
    const QColor ink(0x12, 0x43, 0x5e);
    canvas.type(QStringLiteral("遠い海"), {0.064, 0.150}, 0.070, QFont::Light, ink);
    canvas.type(QStringLiteral("Mizuki Arai Trio"), {0.067, 0.205}, 0.026, QFont::Normal, ink);
    return canvas.finish();
}

QImage shapes() {
    CoverCanvas canvas(side);
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

QImage whiteRoom() {
    CoverCanvas canvas(side);
    canvas.shade(
        [](double x, double y) {
            Tint tint = mix(Tint(0xfbfaf7), Tint(0xecebe6), smoothStep(0.15, 1.05, y * 0.8 + x * 0.25));
            // Daylight through a window with two panes, slanting over the wall.
            const double slanted = x + (y - 0.4) * 0.42;
            for (const double left : {0.55, 0.735}) {
                const double light = smoothStep(left, left + 0.010, slanted) *
                                     (1 - smoothStep(left + 0.155, left + 0.165, slanted)) *
                                     smoothStep(0.10, 0.115, y - x * 0.12) *
                                     (1 - smoothStep(0.68, 0.72, y - x * 0.12));
                tint = mix(tint, Tint(0xffffff), 0.85 * light);
            }
            return tint * (0.997 + 0.006 * noise(x * 90, y * 90, 2, 9));
        },
        0.006);
    QPainter& painter = canvas.painter();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x2c, 0x2c, 0x2e), 0.0022));
    painter.drawLine(QPointF(0.305, 0.19), QPointF(0.305, 0.455));
    painter.drawEllipse(QPointF(0.305, 0.487), 0.032, 0.032);
    painter.drawLine(QPointF(0.305, 0.519), QPointF(0.305, 0.79));
    canvas.type(QStringLiteral("stanza bianca"), {0.066, 0.935}, 0.030, QFont::Light,
                QColor(0x4a, 0x4a, 0x4c), 0.01);
    return canvas.finish();
}

QImage night() {
    CoverCanvas canvas(side);
    canvas.shade([](double x, double y) {
        const double cloud = noise(x * 2.4, y * 2.4 + x, 5, 17);
        const double band = std::exp(-std::pow((x * 0.7 + y * 0.72 - 0.82) / 0.24, 2));
        return Tint(0x060709) + Tint(0x12131b) * (cloud * band * 1.2) + Tint(0x0a0608) * (cloud * y);
    });
    Dice dice(2014);
    QPainter& painter = canvas.painter();
    for (int star = 0; star < 420; ++star) {
        const QPointF place(dice.roll(), dice.roll());
        const double brightness = std::pow(dice.roll(), 7);
        painter.setBrush(QColor::fromRgbF(0.86F, 0.88F, 0.96F, static_cast<float>(0.05 + 0.5 * brightness)));
        const double radius = 0.0005 + 0.0012 * brightness;
        painter.drawEllipse(place, radius, radius);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0xb8, 0x7a, 0x66), 0.0032, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(0.22, 0.21, 0.42, 0.42), 100 * 16, 72 * 16);
    canvas.type(QStringLiteral("NOTTE"), {0.070, 0.930}, 0.026, QFont::Normal, QColor(0x5e, 0x5c, 0x62),
                0.28);
    return canvas.finish();
}

QImage pier() {
    CoverCanvas canvas(side);
    const double horizon = 0.47;
    canvas.shade(
        [&](double x, double y) {
            const double from = std::abs(y - horizon);
            double light = 0.98 - 0.62 * std::pow(from / 0.53, 0.75);
            // A long exposure: clouds and water are drawn out sideways.
            const double depth = y < horizon ? 7 : 3 + 0.9 / (0.03 + from);
            light += 0.17 * (noise(x * 1.3 + 3, y * depth, 4, 71) - 0.5) * smoothStep(0.01, 0.22, from);
            if (y > horizon)
                light -= 0.07;
            light *= 1 - 0.30 * smoothStep(0.45, 0.85, std::hypot(x - 0.5, y - 0.5));
            return Tint(light, light, light);
        },
        0.05);
    QPainter& painter = canvas.painter();
    // Two rows of posts run towards one point on the horizon.
    for (int post = 0; post < 15; ++post) {
        const double near = std::pow(0.80, post);
        for (const double row : {-1.0, 1.0}) {
            const double x = 0.585 + (row * 0.19 - 0.05) * near;
            const double foot = horizon + 0.40 * near;
            const double height = 0.30 * near;
            const double width = 0.030 * near;
            const int grey = static_cast<int>(18 + 150 * (1 - near));
            QLinearGradient wood(x - width / 2, 0, x + width / 2, 0);
            wood.setColorAt(0, QColor(grey + 24, grey + 24, grey + 24));
            wood.setColorAt(0.45, QColor(grey, grey, grey));
            wood.setColorAt(1, QColor(grey / 2, grey / 2, grey / 2));
            painter.setBrush(wood);
            painter.drawRoundedRect(QRectF(x - width / 2, foot - height, width, height), width / 4,
                                    width / 8);
            QLinearGradient mirror(0, foot, 0, foot + height * 1.1);
            mirror.setColorAt(0, QColor(grey, grey, grey, 150));
            mirror.setColorAt(1, QColor(grey, grey, grey, 0));
            painter.setBrush(mirror);
            painter.drawRect(QRectF(x - width / 2, foot, width, height * 1.1));
        }
    }
    const QColor ink(0x16, 0x16, 0x16);
    canvas.type(QStringLiteral("Colette Aubrac"), {0.066, 0.108}, 0.026, QFont::Medium,
                QColor(0xf4, 0xf4, 0xf4));
    canvas.type(QStringLiteral("Marée basse,"), {0.064, 0.415}, 0.046, QFont::ExtraLight, ink, -0.01);
    canvas.type(QStringLiteral("cahier bleu"), {0.064, 0.478}, 0.046, QFont::ExtraLight, ink, -0.01);
    return canvas.finish();
}

QImage crossing() {
    CoverCanvas canvas(side);
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

QImage cityLights() {
    CoverCanvas canvas(side);
    canvas.shade([](double x, double y) {
        const Tint sky = ramp({{0, 0x0a1126}, {0.42, 0x182243}, {0.58, 0x2b2850}, {1, 0x0b0e1d}}, y);
        const double wet = smoothStep(0.58, 0.75, y) * noise(x * 26, y * 2.2, 3, 81);
        return sky + Tint(0x33204a) * (wet * 0.75) +
               Tint(0x402a36) * (0.7 * std::exp(-std::pow((y - 0.55) / 0.10, 2)));
    });
    QPainter& painter = canvas.painter();
    painter.setCompositionMode(QPainter::CompositionMode_Screen);
    constexpr std::array<QRgb, 7> lamps{0xff9a2e, 0xffc04d, 0xff4a2e, 0x2ea8ff, 0xff4f8b, 0x2fe0a0, 0xffd58a};
    Dice dice(1987);
    for (int lamp = 0; lamp < 120; ++lamp) {
        const double size = std::pow(dice.roll(), 2.2);
        const double radius = 0.012 + 0.075 * size;
        const QPointF place(dice.roll(-0.05, 1.05), 0.52 + (dice.roll() + dice.roll() - 1) * 0.34);
        QColor colour = QColor::fromRgb(lamps[static_cast<std::size_t>(dice.roll() * lamps.size())]);
        const double strength = (0.16 + 0.50 * dice.roll()) * (1 - 0.55 * size);
        QRadialGradient disc(place, radius);
        colour.setAlphaF(static_cast<float>(strength * 0.72));
        disc.setColorAt(0, colour);
        disc.setColorAt(0.82, colour);
        colour.setAlphaF(static_cast<float>(strength));
        disc.setColorAt(0.94, colour); // the bright rim of a light out of focus
        colour.setAlphaF(0);
        disc.setColorAt(1, colour);
        painter.setBrush(disc);
        painter.drawEllipse(place, radius, radius);
        if (place.y() < 0.52)
            continue;
        QLinearGradient streak(0, place.y(), 0, place.y() + radius * 5);
        colour.setAlphaF(static_cast<float>(strength * 0.30));
        streak.setColorAt(0, colour);
        colour.setAlphaF(0);
        streak.setColorAt(1, colour);
        painter.setBrush(streak);
        painter.drawRoundedRect(QRectF(place.x() - radius * 0.45, place.y(), radius * 0.9, radius * 5),
                                radius * 0.45, radius * 0.45);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    canvas.type(QStringLiteral("Straßenlaternen"), {0.5, 0.118}, 0.050, QFont::Light, Qt::white, 0.005,
                Qt::AlignHCenter);
    canvas.type(QStringLiteral("im Regen"), {0.5, 0.184}, 0.050, QFont::Light, Qt::white, 0.005,
                Qt::AlignHCenter);
    canvas.type(QStringLiteral("JÖRN ÖSTERLIND QUARTETT"), {0.5, 0.945}, 0.018, QFont::Medium, Qt::white,
                0.16, Qt::AlignHCenter);
    return canvas.finish();
}

QImage typography() {
    CoverCanvas canvas(side);
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

QImage stripes() {
    CoverCanvas canvas(side);
    canvas.shade([](double x, double y) {
        return Tint(0xf1e2c6) * (0.96 + 0.06 * noise(x * 140, y * 140, 2, 3)) *
               (1 - 0.10 * smoothStep(0.35, 0.75, std::hypot(x - 0.5, y - 0.5)));
    });
    QPainter& painter = canvas.painter();
    painter.setBrush(Qt::NoBrush);
    constexpr std::array<QRgb, 5> colours{0x5b2a1d, 0xa63d22, 0xd9692b, 0xeca13a, 0x3d7f78};
    for (std::size_t stripe = 0; stripe < colours.size(); ++stripe) {
        const double offset = static_cast<double>(stripe) * 0.062;
        QPainterPath path(QPointF(-0.1, 0.40 + offset));
        path.lineTo(0.34, 0.40 + offset);
        const double radius = 0.36 - offset;
        path.arcTo(QRectF(0.34 - radius, 0.40 + offset, 2 * radius, 2 * radius), 90, -90);
        path.lineTo(0.34 + radius, 1.1);
        painter.setPen(QPen(QColor::fromRgb(colours[stripe]), 0.0632, Qt::SolidLine, Qt::FlatCap));
        painter.drawPath(path);
    }
    const QColor ink(0x5b, 0x2a, 0x1d);
    canvas.type(QStringLiteral("nastro del"), {0.062, 0.150}, 0.080, QFont::ExtraBold, ink, -0.04);
    canvas.type(QStringLiteral("sabato"), {0.062, 0.262}, 0.080, QFont::ExtraBold, ink, -0.04);
    canvas.type(QStringLiteral("duo ginestra"), {0.940, 0.150}, 0.024, QFont::Medium, ink, 0, Qt::AlignRight);
    return canvas.finish();
}

QByteArray encoded(const QImage& picture, const char* format, int quality, int compression) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setCompression(compression);
    writer.write(picture);
    return bytes;
}

/// Photographs, whose noise costs a lossless format five megabytes.
QByteArray photograph(const QImage& picture) { return encoded(picture, "jpeg", 96, 0); }

/// Flat colours, whose edges a lossy format would smear.
QByteArray drawing(const QImage& picture) { return encoded(picture, "png", -1, 30); }

} // namespace

QByteArray paintCover(DemoCover cover) {
    switch (cover) {
    case DemoCover::None:
        break;
    case DemoCover::Dusk:
        return photograph(dusk());
    case DemoCover::Sea:
        return photograph(sea());
    case DemoCover::Shapes:
        return drawing(shapes());
    case DemoCover::WhiteRoom:
        return photograph(whiteRoom());
    case DemoCover::Night:
        return photograph(night());
    case DemoCover::Pier:
        return photograph(pier());
    case DemoCover::Crossing:
        return drawing(crossing());
    case DemoCover::CityLights:
        return photograph(cityLights());
    case DemoCover::Typography:
        return drawing(typography());
    case DemoCover::Stripes:
        return photograph(stripes());
    }
    return {};
}

QByteArray paintCassette() {
    QImage picture(1400, 900, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);

    QLinearGradient shell(0, 0, 0, 900);
    shell.setColorAt(0, QColor(0x3a, 0x39, 0x3d));
    shell.setColorAt(0.08, QColor(0x2b, 0x2a, 0x2e));
    shell.setColorAt(1, QColor(0x1b, 0x1a, 0x1d));
    painter.setBrush(shell);
    painter.drawRoundedRect(QRectF(10, 10, 1380, 880), 46, 46);
    painter.setBrush(QColor(255, 255, 255, 18));
    painter.drawRoundedRect(QRectF(10, 10, 1380, 8), 4, 4);

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
    painter.setBrush(QColor(0x24, 0x23, 0x27));
    painter.drawPolygon(QPolygonF({{270, 890}, {310, 700}, {1090, 700}, {1130, 890}}));
    painter.setBrush(QColor(0x0d, 0x0d, 0x0f));
    for (const double x : {420.0, 560.0, 840.0, 980.0})
        painter.drawEllipse(QPointF(x, 815), 26, 26);
    for (const QPointF screw : {QPointF(55, 55), QPointF(1345, 55), QPointF(55, 845), QPointF(1345, 845)}) {
        painter.setBrush(QColor(0x77, 0x75, 0x78));
        painter.drawEllipse(screw, 17, 17);
        painter.setPen(QPen(QColor(0x2c, 0x2b, 0x2e), 4));
        painter.drawLine(screw - QPointF(10, 6), screw + QPointF(10, 6));
        painter.setPen(Qt::NoPen);
    }
    painter.end();
    return encoded(picture, "png", -1, 30);
}

} // namespace tarnwick::musicapp
