#include "assets/painter/LabelCanvas.h"

#include "assets/painter/Linear.h"

#include <QtMath>

#include <algorithm>
#include <array>

namespace tarnwick::painter {

namespace {

/// The fine print: words of the letters there are.
constexpr std::array words{"TRAIN", "ATTIC", "ARCTIC", "KIWI", "CAIRN", "TWIN", "RAIN", "TRACK",
                           "WAIT",  "TIARA", "CRANK",  "RACK", "TANK",  "INK",  "TACT", "WARRANT"};

double luminanceOf(const QColor& colour) {
    return static_cast<double>(linearOf(colour.rgb() & 0xFFFFFF).luminance());
}

} // namespace

LabelCanvas::LabelCanvas(QPainter& painter, const Disc& disc)
    : m_painter(painter), m_seed(disc.seed), m_paper(QColor::fromRgb(disc.label.paper)),
      m_ink(QColor::fromRgb(disc.label.ink)), m_accent(QColor::fromRgb(disc.label.accent)),
      m_speed(disc.zones.label > 0.4F ? QStringLiteral("45") : QStringLiteral("33")) {}

void LabelCanvas::circle(double radius, const QColor& colour) {
    m_painter.setBrush(colour);
    m_painter.setPen(Qt::NoPen);
    m_painter.drawEllipse(QPointF(), radius, radius);
}

void LabelCanvas::ring(double radius, double width, const QColor& colour) {
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(colour, width));
    m_painter.drawEllipse(QPointF(), radius, radius);
}

void LabelCanvas::text(const QString& what, double x, double y, const StrokeType& type) {
    drawStrokes(m_painter, what, {x, y}, type);
}

void LabelCanvas::textOnCircle(const QString& what, double radius, double degrees, const StrokeType& type,
                               bool inwards) {
    drawStrokesOnCircle(m_painter, what, radius, degrees, type, inwards);
}

void LabelCanvas::finePrintRing(double radius, double height) {
    StrokeType type{height, 0.13, 0.36};
    const double room = 2 * M_PI * radius;
    const auto separator = QStringLiteral(" - ");
    QString line;
    for (int index = 0;; ++index) {
        const QString longer = line + word(index) + separator;
        if (strokeWidth(longer, type) > room)
            break;
        line = longer;
    }
    // What is left over goes between the letters, so that the ring closes.
    type.tracking += (room - strokeWidth(line, type)) / (static_cast<double>(line.size()) * height);
    textOnCircle(line, radius, 0, type);
}

void LabelCanvas::rows(double top, int count, double height, double x, int first) {
    for (int i = 0; i < count; ++i)
        text(word(first + i), x, top + i * height * 1.9, {height, 0.14, 0.36});
}

void LabelCanvas::sides(double y, double x) {
    text(m_speed, -x, y, {0.075, 0.14, 0.34});
    text(QStringLiteral("1"), x, y, {0.075, 0.14, 0.34});
}

void LabelCanvas::plate(double radius, double edge, double nameRadius) {
    circle(radius, m_paper);
    ring(radius, edge, m_ink);
    setPen(m_ink);
    textOnCircle(name(), nameRadius, 0, {0.115, 0.15, 0.34});
    text(m_speed, -0.33, 0.02, {0.07});
    text(QStringLiteral("1"), 0.33, 0.02, {0.07});
    rows(0.24, 3);
}

bool LabelCanvas::isDark() const { return luminanceOf(m_paper) < 0.03; }

QColor LabelCanvas::edge() const {
    constexpr double light = 0.34;
    const auto lit = [](double channel, double towards) { return channel + light * (towards - channel); };
    return QColor::fromRgbF(static_cast<float>(lit(m_paper.redF(), m_ink.redF())),
                            static_cast<float>(lit(m_paper.greenF(), m_ink.greenF())),
                            static_cast<float>(lit(m_paper.blueF(), m_ink.blueF())));
}

const QColor& LabelCanvas::readableOn(const QColor& ground) const {
    const auto contrast = [&](const QColor& colour) {
        const double a = luminanceOf(colour), b = luminanceOf(ground);
        return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
    };
    return contrast(m_paper) >= contrast(m_ink) ? m_paper : m_ink;
}

QString LabelCanvas::word(int index) const {
    constexpr std::size_t stride = 5; // shares no factor with the number of words
    const std::size_t place = static_cast<std::size_t>(index) * stride + m_seed * 3;
    return QLatin1String(words[place % words.size()]);
}

} // namespace tarnwick::painter
