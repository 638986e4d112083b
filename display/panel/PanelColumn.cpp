#include "display/panel/PanelColumn.h"

#include "canvas/type/TextInk.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

namespace {

constexpr double topMargin = 20;
constexpr double bottomMargin = 12;
constexpr double smallestScale = 0.6;
constexpr double spare = 0.995;         // a size that is just right could turn out a hair too wide
constexpr double tallestOverhang = 0.6; // of the type's size, beyond the line, above and below

} // namespace

PanelColumn::PanelColumn(const PanelFrame& frame)
    : m_frame(frame), m_limit(frame.window.height() - bottomMargin), m_bottom(topMargin) {}

void PanelColumn::skip(double points) {
    if (m_bottom > topMargin)
        m_skip += points;
}

double PanelColumn::snapped(double position) const {
    return std::round(position * m_frame.pixelRatio) / m_frame.pixelRatio;
}

std::optional<double> PanelColumn::takeHeight(double height) {
    if (!fits(height)) {
        m_full = true;
        return std::nullopt;
    }
    const double top = y();
    m_bottom = top + height;
    m_skip = 0;
    return top;
}

QFont PanelColumn::fontFor(const QStringList& lines, const Style& style, double width) {
    const auto sized = [&](double size) { return panelFont(style.face, size, style.weight(size)); };
    const QFont font = sized(style.points);
    double widest = 0;
    for (const QString& line : lines)
        widest = std::max(widest, measureInk(line, font).ink.width());
    if (widest <= width)
        return font;
    return sized(style.points * std::clamp(spare * width / widest, smallestScale, 1.0));
}

/// The same words in lines none of which is wider than `width`, but for words that are. What is left of a
/// line goes on in the next one.
QStringList PanelColumn::narrowed(const QStringList& lines, const QFont& font, double width) {
    QStringList narrow;
    QString rest;
    for (const QString& line : lines) {
        const QString whole = rest.isEmpty() ? line : rest + u' ' + line;
        rest.clear();
        for (const QString& word : whole.split(u' ')) {
            const QString longer = rest.isEmpty() ? word : rest + u' ' + word;
            if (rest.isEmpty() || measureInk(longer, font).ink.width() <= width) {
                rest = longer;
            } else {
                narrow.append(rest);
                rest = word;
            }
        }
        if (rest == whole)
            narrow.append(std::exchange(rest, {}));
    }
    if (!rest.isEmpty())
        narrow.append(rest);
    return narrow;
}

bool PanelColumn::addText(const QStringList& wrapped, const QString& spoken, const Style& style,
                          double reserve) {
    const double width = m_frame.widestLine() - style.room;
    const QFont font = fontFor(wrapped, style, width);
    const QStringList lines = narrowed(wrapped, font, width);
    const double height = lineHeight * typeSize(font);
    if (width <= 0 || !fits(height)) {
        m_full = true;
        return false;
    }
    const auto room = static_cast<qsizetype>((m_limit + tolerance - y() - reserve) / height);
    const qsizetype count = std::clamp(room, qsizetype{1}, lines.size());

    m_firstOfText = m_lines.size();
    qsizetype placed = 0;
    while (placed < count && place(lines[placed], style, font, width))
        ++placed;
    if (placed == 0)
        return false;
    if (placed < lines.size())
        endLast(lines[placed - 1] + style.ending, width);
    m_lines[m_firstOfText].spoken = spoken;
    return true;
}

void PanelColumn::align(PanelLine& line, double right) {
    const QRectF ink = measureInk(line.text, line.font).ink;
    line.x = right - ink.right();
    line.box.setLeft(line.x + ink.left());
    line.box.setRight(right);
}

void PanelColumn::endLast(const QString& text, double width) {
    PanelLine& last = m_lines.back();
    last.text = elidedToInk(text, last.font, width);
    align(last, m_frame.inkEdge());
}

bool PanelColumn::place(const QString& text, const Style& style, const QFont& font, double width) {
    PanelLine line{.block = style.block, .text = elidedToInk(text, font, width), .font = font};
    const QRectF ink = measureInk(line.text, font).ink;
    const double size = typeSize(font);

    // Tall scripts get the air they need, so that their ink touches no other line's.
    const double most = tallestOverhang * size;
    const double above = -ink.top() - ascent * size;
    const double below = ink.bottom() - (lineHeight - ascent) * size;
    const double height = lineHeight * size + std::clamp(above, 0.0, most) + std::clamp(below, 0.0, most);
    const std::optional<double> top = takeHeight(height);
    if (!top || line.text.isEmpty())
        return false;
    line.baseline = snapped(*top + std::clamp(above, 0.0, most) + ascent * size);
    line.box = QRectF(0, *top, 0, height);
    line.clipped = above > most || below > most;
    align(line, m_frame.inkEdge());
    m_lines.push_back(line);
    return true;
}

void PanelColumn::addLabels(const QString& text, const QFont& font, double distance) {
    if (m_firstOfText >= m_lines.size())
        return;
    double left = m_frame.inkEdge();
    for (size_t i = m_firstOfText; i < m_lines.size(); ++i)
        left = std::min(left, m_lines[i].x);
    const PanelLine& first = m_lines[m_firstOfText];
    PanelLine line{
        .block = first.block, .text = text, .font = font, .baseline = first.baseline, .spoken = text};
    const double size = typeSize(font);
    line.box = QRectF(0, line.baseline - ascent * size, 0, lineHeight * size);
    align(line, left - distance);
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(m_firstOfText), line);
}

} // namespace tarnwick
