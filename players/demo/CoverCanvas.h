#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QString>

#include <functional>
#include <initializer_list>
#include <utility>

namespace tarnwick::players {

/// The sides of a sleeve in pixels.
inline constexpr int coverSide = 1600;

/// Numbers that look random and are the same every time.
class Dice {
public:
    explicit Dice(quint64 seed) : m_state(seed) {}

    /// Uniform in 0 to 1.
    double roll();
    double roll(double least, double most) { return least + (most - least) * roll(); }

private:
    quint64 m_state;
};

/// Smooth noise of `octaves` octaves at (x, y), about 0 to 1, one bump per unit of the first octave.
double noise(double x, double y, int octaves, quint64 seed);

/// 0 below `from`, 1 above `to`, smooth in between.
double smoothStep(double from, double to, double value);

/// A colour as three fractions that arithmetic is done on.
struct Tint {
    double red = 0;
    double green = 0;
    double blue = 0;

    Tint() = default;
    Tint(double r, double g, double b) : red(r), green(g), blue(b) {}
    Tint(QRgb colour); // NOLINT(google-explicit-constructor): a colour written as 0xrrggbb

    friend Tint mix(const Tint& a, const Tint& b, double amount) {
        return {a.red + (b.red - a.red) * amount, a.green + (b.green - a.green) * amount,
                a.blue + (b.blue - a.blue) * amount};
    }
    friend Tint operator*(const Tint& a, double factor) {
        return {a.red * factor, a.green * factor, a.blue * factor};
    }
    friend Tint operator+(const Tint& a, const Tint& b) {
        return {a.red + b.red, a.green + b.green, a.blue + b.blue};
    }
};

/// A ramp through colours at places from 0 to 1, smooth between them.
Tint ramp(std::initializer_list<std::pair<double, Tint>> stops, double place);

/// A square picture whose sides are 1 long, whatever its size in pixels.
class CoverCanvas {
public:
    explicit CoverCanvas(int side);

    /// Sets every pixel; `colour` gets its place, (0, 0) top left. Rounded with noise, so that wide
    /// gradients show no steps, and with film grain of `grain` (0 to 1) on top.
    void shade(const std::function<Tint(double x, double y)>& colour, double grain = 0);

    QPainter& painter() { return m_painter; }

    /// A line of type, its baseline beginning at `at`, `height` high from baseline to ascender.
    /// `spacing` is added between letters, in parts of the size. Nothing where there are no fonts.
    void type(const QString& text, QPointF at, double height, QFont::Weight weight, const QColor& colour,
              double spacing = 0, Qt::Alignment alignment = Qt::AlignLeft);

    QImage finish();

private:
    QImage m_image;
    QPainter m_painter;
};

} // namespace tarnwick::players
