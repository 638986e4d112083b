#include "players/demo/PhotographicCovers.h"

#include "players/demo/CoverCanvas.h"

#include <QLinearGradient>
#include <QRadialGradient>

#include <array>
#include <cmath>

// They have nothing in common but the canvas.

namespace tarnwick::players {

namespace {

/// The hills of `paintDusk`, one range before the other.
class Hills {
public:
    Hills();

    /// The colour at (x, y) where `sky` is behind; `distance` is how far the sun is away.
    Tint before(const Tint& sky, double x, double y, double distance) const;

private:
    struct Range {
        double base; ///< the height around which its outline goes up and down
        double height;
        double scale;
        quint64 seed;
        Tint colour;
        double haze;
    };

    std::array<Range, 5> m_ranges{{{0.615, 0.05, 2.2, 41, 0x93566a, 0.34},
                                   {0.690, 0.09, 2.8, 12, 0x70425f, 0.22},
                                   {0.775, 0.10, 3.1, 93, 0x4d3057, 0.15},
                                   {0.860, 0.10, 3.6, 54, 0x302446, 0.09},
                                   {0.945, 0.09, 4.4, 75, 0x171628, 0.04}}};
    std::array<std::array<double, coverSide>, 5> m_tops{}; ///< of every range, by column of pixels
};

Hills::Hills() {
    for (std::size_t i = 0; i < m_ranges.size(); ++i) {
        const Range& range = m_ranges[i];
        for (int column = 0; column < coverSide; ++column) {
            const double x = (column + 0.5) / coverSide;
            m_tops[i][static_cast<std::size_t>(column)] =
                range.base - range.height * (noise(x * range.scale, 0.5, 4, range.seed) - 0.5) * 2;
        }
    }
}

Tint Hills::before(const Tint& sky, double x, double y, double distance) const {
    Tint tint = sky;
    for (std::size_t i = 0; i < m_ranges.size(); ++i) {
        const Range& range = m_ranges[i];
        const double top = m_tops[i][static_cast<std::size_t>(x * coverSide)];
        const double inside = smoothStep(-0.0008, 0.0008, y - top);
        if (inside == 0)
            continue;
        // Mist gathers at the foot of every range.
        const double mist =
            range.haze * smoothStep(0.0, 0.16, y - top) + 0.16 * std::exp(-distance * 4) * (1 - range.base);
        tint = mix(tint, mix(range.colour, Tint(0xd98f7c), mist), inside);
    }
    return tint;
}

/// The sky of `paintDusk`, `distance` away from the middle of its sun.
Tint duskSky(double x, double y, double distance) {
    Tint tint = ramp({{0.00, 0x1d2a55},
                      {0.22, 0x46466f},
                      {0.40, 0x8c5f72},
                      {0.52, 0xc9806a},
                      {0.62, 0xe8a06c},
                      {0.70, 0xf2b878}},
                     y);
    // Thin streaks of cloud, lit from below near the horizon.
    const double height = smoothStep(0.10, 0.30, y) * (1 - smoothStep(0.46, 0.60, y));
    const double cloud = height > 0 ? height * smoothStep(0.52, 0.80, noise(x * 2.2, y * 15, 4, 7)) : 0;
    tint = mix(tint, mix(Tint(0xf0a985), Tint(0x5c4a73), smoothStep(0.1, 0.6, distance)), cloud * 0.55);
    tint = mix(tint, Tint(0xffc27a), 0.85 * std::exp(-distance * 5.2));
    tint = mix(tint, Tint(0xffe6b0), 0.80 * std::exp(-distance * 13));
    return mix(Tint(0xfff3d2), tint, smoothStep(0.0735, 0.0765, distance));
}

/// The lamps of `paintCityLights`, out of focus, and their streaks on the wet street.
void drawLamps(QPainter& painter) {
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
}

/// The posts of `paintPier`: two rows that run towards one point on the horizon.
void drawPosts(QPainter& painter, double horizon) {
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
}

} // namespace

QImage paintDusk() {
    CoverCanvas canvas(coverSide);
    const QPointF sun(0.62, 0.52);
    const Hills hills;
    canvas.shade(
        [&](double x, double y) {
            const double distance = std::hypot(x - sun.x(), y - sun.y());
            return hills.before(duskSky(x, y, distance), x, y, distance);
        },
        0.012);
    const QColor cream(0xf6, 0xee, 0xdc);
    canvas.type(QStringLiteral("Lontano"), {0.066, 0.165}, 0.082, QFont::Light, cream, -0.02);
    canvas.type(QStringLiteral("NEVIA  CORALLO"), {0.070, 0.215}, 0.022, QFont::Medium, cream, 0.05);
    return canvas.finish();
}

QImage paintSea() {
    CoverCanvas canvas(coverSide);
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

QImage paintWhiteRoom() {
    CoverCanvas canvas(coverSide);
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

QImage paintNight() {
    CoverCanvas canvas(coverSide);
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

QImage paintPier() {
    CoverCanvas canvas(coverSide);
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
    drawPosts(canvas.painter(), horizon);
    const QColor ink(0x16, 0x16, 0x16);
    canvas.type(QStringLiteral("Colette Aubrac"), {0.066, 0.108}, 0.026, QFont::Medium,
                QColor(0xf4, 0xf4, 0xf4));
    canvas.type(QStringLiteral("Marée basse,"), {0.064, 0.415}, 0.046, QFont::ExtraLight, ink, -0.01);
    canvas.type(QStringLiteral("cahier bleu"), {0.064, 0.478}, 0.046, QFont::ExtraLight, ink, -0.01);
    return canvas.finish();
}

QImage paintCityLights() {
    CoverCanvas canvas(coverSide);
    canvas.shade([](double x, double y) {
        const Tint sky = ramp({{0, 0x0a1126}, {0.42, 0x182243}, {0.58, 0x2b2850}, {1, 0x0b0e1d}}, y);
        const double wet = smoothStep(0.58, 0.75, y) * noise(x * 26, y * 2.2, 3, 81);
        return sky + Tint(0x33204a) * (wet * 0.75) +
               Tint(0x402a36) * (0.7 * std::exp(-std::pow((y - 0.55) / 0.10, 2)));
    });
    drawLamps(canvas.painter());
    canvas.type(QStringLiteral("Straßenlaternen"), {0.5, 0.118}, 0.050, QFont::Light, Qt::white, 0.005,
                Qt::AlignHCenter);
    canvas.type(QStringLiteral("im Regen"), {0.5, 0.184}, 0.050, QFont::Light, Qt::white, 0.005,
                Qt::AlignHCenter);
    canvas.type(QStringLiteral("JÖRN ÖSTERLIND QUARTETT"), {0.5, 0.945}, 0.018, QFont::Medium, Qt::white,
                0.16, Qt::AlignHCenter);
    return canvas.finish();
}

} // namespace tarnwick::players
