#include "players/demo/CoverCanvas.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tarnwick::players {

namespace {

quint64 scramble(quint64 value) {
    value += 0x9e3779b97f4a7c15U;
    value = (value ^ (value >> 30U)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27U)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31U);
}

double fraction(quint64 value) { return static_cast<double>(value >> 11U) * 0x1.0p-53; }

constexpr int latticeSide = 256;

/// Random heights on a grid that repeats; a seed chooses the corner of it that is looked at.
float latticeHeight(unsigned x, unsigned y) {
    static const std::vector<float> heights = [] {
        std::vector<float> values(latticeSide * latticeSide);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<float>(fraction(scramble(i)));
        return values;
    }();
    return heights[(y % latticeSide) * latticeSide + x % latticeSide];
}

double smoothNoise(double x, double y, quint64 seed) {
    const double left = std::floor(x);
    const double top = std::floor(y);
    const double fx = (x - left) * (x - left) * (3 - 2 * (x - left));
    const double fy = (y - top) * (y - top) * (3 - 2 * (y - top));
    const quint64 offset = scramble(seed);
    const auto ix = static_cast<unsigned>(static_cast<int>(left)) + static_cast<unsigned>(offset);
    const auto iy = static_cast<unsigned>(static_cast<int>(top)) + static_cast<unsigned>(offset >> 32U);
    const double above = latticeHeight(ix, iy) * (1 - fx) + latticeHeight(ix + 1, iy) * fx;
    const double below = latticeHeight(ix, iy + 1) * (1 - fx) + latticeHeight(ix + 1, iy + 1) * fx;
    return above * (1 - fy) + below * fy;
}

uchar rounded(double value, double threshold) {
    return static_cast<uchar>(std::clamp(std::floor(value * 255 + threshold), 0.0, 255.0));
}

} // namespace

double Dice::roll() {
    m_state = scramble(m_state);
    return fraction(m_state);
}

double noise(double x, double y, int octaves, quint64 seed) {
    double sum = 0;
    double weight = 0.5;
    double total = 0;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += weight * smoothNoise(x, y, seed + static_cast<quint64>(octave));
        total += weight;
        weight *= 0.5;
        x *= 2.03;
        y *= 2.03;
    }
    return sum / total;
}

double smoothStep(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

Tint::Tint(QRgb colour)
    : red(qRed(colour) / 255.0), green(qGreen(colour) / 255.0), blue(qBlue(colour) / 255.0) {}

Tint ramp(std::initializer_list<std::pair<double, Tint>> stops, double place) {
    const auto* before = stops.begin();
    if (place <= before->first)
        return before->second;
    for (const auto* after = before + 1; after != stops.end(); before = after++) {
        if (place < after->first)
            return mix(before->second, after->second, smoothStep(before->first, after->first, place));
    }
    return before->second;
}

CoverCanvas::CoverCanvas(int side) : m_image(side, side, QImage::Format_RGB32) {
    m_image.fill(Qt::black);
    m_painter.begin(&m_image);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    m_painter.scale(side, side);
    m_painter.setPen(Qt::NoPen);
}

void CoverCanvas::shade(const std::function<Tint(double, double)>& colour, double grain) {
    const int side = m_image.width();
    Dice dice(static_cast<quint64>(side));
    m_painter.end();
    for (int row = 0; row < side; ++row) {
        auto* line = reinterpret_cast<QRgb*>(m_image.scanLine(row));
        for (int column = 0; column < side; ++column) {
            Tint tint = colour((column + 0.5) / side, (row + 0.5) / side);
            const double dither = dice.roll();
            if (grain > 0) {
                const double speck = (dice.roll() + dice.roll() - 1) * grain;
                tint = tint + Tint(speck, speck, speck);
            }
            line[column] =
                qRgb(rounded(tint.red, dither), rounded(tint.green, dither), rounded(tint.blue, dither));
        }
    }
    m_painter.begin(&m_image);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    m_painter.scale(side, side);
    m_painter.setPen(Qt::NoPen);
}

void CoverCanvas::type(const QString& text, QPointF at, double height, QFont::Weight weight,
                       const QColor& colour, double spacing, Qt::Alignment alignment) {
    // Fonts exist only in a program that can show something.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return;
    const double side = m_image.width();
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(height * side * 1.375))));
    font.setWeight(weight);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing * font.pixelSize());
    const double width = QFontMetricsF(font).horizontalAdvance(text);
    QPointF place = at * side;
    if (alignment.testFlag(Qt::AlignRight))
        place.rx() -= width;
    else if (alignment.testFlag(Qt::AlignHCenter))
        place.rx() -= width / 2;
    m_painter.save();
    m_painter.resetTransform();
    m_painter.setFont(font);
    m_painter.setPen(colour);
    m_painter.drawText(place, text);
    m_painter.restore();
}

QImage CoverCanvas::finish() {
    m_painter.end();
    return m_image;
}

} // namespace tarnwick::players
