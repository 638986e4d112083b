#include "display/panel/TextInk.h"

#include <QGlyphRun>
#include <QHash>
#include <QPainterPath>
#include <QRawFont>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <QTextOption>

#include <vector>

namespace tarnwick {

namespace {

/// The outline's box; a picture glyph, which has none, gives the box of its picture. The boxes that were
/// found last are kept: outlines are slow, and a track's texts are measured several times.
QRectF glyphBox(const QRawFont& font, quint32 glyph) {
    constexpr qsizetype most = 4096;
    thread_local QHash<std::pair<QRawFont, quint32>, QRectF> known;
    const std::pair key(font, glyph);
    if (const auto found = known.constFind(key); found != known.cend())
        return *found;
    if (known.size() >= most)
        known.clear();
    const QRectF outline = font.pathForGlyph(glyph).boundingRect();
    return *known.insert(key, outline.isEmpty() ? font.boundingRect(glyph) : outline);
}

QRectF inkOfRun(const QGlyphRun& run) {
    QRectF ink;
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
        const QRectF box = glyphBox(run.rawFont(), glyphs[i]);
        if (!box.isEmpty())
            ink |= box.translated(positions[i]);
    }
    return ink;
}

} // namespace

TextInk measureInk(const QString& text, const QFont& font) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid())
        return {};

    TextInk measured;
    measured.advance = line.naturalTextWidth();
    for (const QGlyphRun& run : layout.glyphRuns())
        measured.ink |= inkOfRun(run);
    if (!measured.ink.isEmpty())
        measured.ink.translate(0, -(line.y() + line.ascent()));
    return measured;
}

QString elidedToInk(const QString& text, const QFont& font, double width, const QString& ending) {
    if (measureInk(text, font).ink.width() <= width)
        return text;
    std::vector<qsizetype> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (finder.toNextBoundary() >= 0)
        ends.push_back(finder.position());

    const auto cut = [&](size_t characters) { return text.left(ends[characters - 1]).trimmed() + ending; };
    size_t fitting = 0;
    for (size_t low = 1, high = ends.size(); low <= high;) {
        const size_t middle = (low + high) / 2;
        if (measureInk(cut(middle), font).ink.width() <= width) {
            fitting = middle;
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return fitting == 0 ? QString() : cut(fitting);
}

} // namespace tarnwick
