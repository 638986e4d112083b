#include "canvas/type/TypeItem.h"

#include "canvas/type/TextInk.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace tarnwick {

namespace {

constexpr int margin = 2; // of ink that runs over its outline: hinting, and the edge's grey

/// What a line of type is painted on. The processor draws type with the weight that it is meant to have only
/// where it sees the ground, so the ground is here: black under light type, white under dark; how far a pixel
/// has come from it is how much of the colour it gets.
class Sheet {
public:
    Sheet(QSize size, const QColor& color)
        : m_color(color), m_isLight(qGray(color.rgb()) > 127), m_ground(size, QImage::Format_RGB32),
          m_coloured(size, QImage::Format_ARGB32_Premultiplied) {
        m_ground.fill(m_isLight ? Qt::black : Qt::white);
        m_coloured.fill(Qt::transparent);
    }

    void draw(const TypeLine& line, QPointF begin) {
        for (const TypeLine::Run& run : line.runs) {
            QPainter painter(run.isColoured ? &m_coloured : &m_ground);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.setPen(m_isLight ? Qt::white : Qt::black);
            painter.translate(run.isColoured ? begin : QPointF());
            painter.scale(run.scale, run.scale);
            painter.drawGlyphRun(run.isColoured ? QPointF() : begin, run.glyphs);
            m_hasColoured = m_hasColoured || run.isColoured;
        }
    }

    QImage finished() const {
        QImage result(m_ground.size(), QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < result.height(); ++y) {
            const auto* from = reinterpret_cast<const QRgb*>(m_ground.constScanLine(y));
            auto* to = reinterpret_cast<QRgb*>(result.scanLine(y));
            for (int x = 0; x < result.width(); ++x) {
                const int share = m_isLight ? qGreen(from[x]) : 255 - qGreen(from[x]);
                to[x] = qPremultiply(
                    qRgba(m_color.red(), m_color.green(), m_color.blue(), share * m_color.alpha() / 255));
            }
        }
        if (m_hasColoured)
            QPainter(&result).drawImage(0, 0, m_coloured);
        return result;
    }

private:
    const QColor m_color;
    const bool m_isLight;
    QImage m_ground;
    QImage m_coloured;
    bool m_hasColoured = false;
};

} // namespace

TypeItem::TypeItem(QQuickItem* parent) : QQuickItem(parent), m_picture(new PictureItem(this)) {}

void TypeItem::componentComplete() {
    QQuickItem::componentComplete();
    measure();
    polish();
}

void TypeItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (m_elides && now.width() != before.width())
        m_isStale = true;
    polish();
}

void TypeItem::measure() {
    if (!isComponentComplete())
        return;
    const double size = typeSize(m_font);
    setImplicitSize(m_inCells ? figureCells(m_font).width(m_text, m_font)
                              : measureInk(m_text, m_font).advance,
                    lineHeight * size);
    setBaselineOffset(ascent * size);
}

std::vector<TypeItem::Run> TypeItem::runs(const QFont& deviceFont) const {
    if (!m_inCells) {
        const double room = width() * m_pixelRatio + 0.01;
        return {{m_elides ? elidedToInk(m_text, deviceFont, room) : m_text, {}}};
    }
    std::vector<Run> runs;
    const std::vector<double> places = figureCells(deviceFont).places(m_text, deviceFont);
    for (qsizetype i = 0; i < m_text.size(); ++i) {
        const double above = m_text[i] == u':' ? m_raise * m_pixelRatio : 0;
        runs.push_back({QString(m_text[i]), {places[static_cast<size_t>(i)], -above}});
    }
    return runs;
}

void TypeItem::updatePolish() {
    const QPointF begin = QPointF(x(), y() + baselineOffset()) * m_pixelRatio;
    // Sideways a glyph may stand between two pixels; upwards it is hinted to whole ones.
    const QPointF off(begin.x() - std::floor(begin.x()), begin.y() - std::round(begin.y()));
    if (!m_isStale && off == m_paintedOff)
        return;
    m_isStale = false;
    m_paintedOff = off;
    paint();
}

void TypeItem::paint() {
    const QFont deviceFont = sizedFont(m_font, typeSize(m_font) * m_pixelRatio);
    const std::vector<Run> runs = this->runs(deviceFont);
    QRectF ink;
    for (const Run& run : runs)
        ink |= measureInk(run.text, deviceFont).ink.translated(run.at);
    if (ink.isEmpty()) {
        m_picture->setPicture(nullptr);
        return;
    }
    ++m_paintCount;
    const QRect place =
        ink.translated(m_paintedOff.x(), 0).toAlignedRect().adjusted(-margin, -margin, margin, margin);
    Sheet sheet(place.size(), m_color);
    for (const Run& run : runs)
        sheet.draw(typeLine(run.text, deviceFont),
                   QPointF(m_paintedOff.x() + run.at.x(), std::round(run.at.y())) - place.topLeft());
    m_picture->setPicture(std::make_shared<const QImage>(sheet.finished()));
    m_picture->setPosition(
        (QPointF(-m_paintedOff.x(), baselineOffset() * m_pixelRatio - m_paintedOff.y()) + place.topLeft()) /
        m_pixelRatio);
    m_picture->setSize(QSizeF(place.size()) / m_pixelRatio);
}

} // namespace tarnwick
