#include "canvas/type/TextInk.h"

#include <QGlyphRun>
#include <QHash>
#include <QPainterPath>
#include <QRawFont>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tarnwick {

namespace {

constexpr double largestPictures = 60; // pixels; larger glyphs are painted as outlines, which these have not
constexpr int referenceSize = 128;     // of the type that lines are laid out in

/// Whether a font's glyphs bring their own colours.
bool isColoured(const QRawFont& font) {
    thread_local QHash<QString, bool> known; // a table is some ten megabytes to copy
    const QString name = font.familyName();
    const auto found = known.constFind(name);
    return found != known.cend() ? *found : *known.insert(name, !font.fontTable("CBDT").isEmpty());
}

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
    // A font that has been asked for the outline of a picture does not draw the picture any more.
    const QRectF outline = isColoured(font) ? QRectF() : font.pathForGlyph(glyph).boundingRect();
    return *known.insert(key, outline.isEmpty() ? font.boundingRect(glyph) : outline);
}

/// A font's sizes are whole pixels, a raw font's are not. Those that were asked for last are kept, with the
/// glyphs that they have painted.
QRawFont sizedRawFont(const QRawFont& font, double size) {
    constexpr qsizetype most = 128;
    constexpr int steps = 1000;
    thread_local QHash<std::pair<QRawFont, int>, QRawFont> known;
    const std::pair key(font, qRound(size * steps));
    if (const auto found = known.constFind(key); found != known.cend())
        return *found;
    if (known.size() >= most)
        known.clear();
    QRawFont sized = font;
    sized.setPixelSize(size);
    return *known.insert(key, sized);
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

/// A font of coloured glyphs, `size` pixels large.
QRawFont pictureFont(const QRawFont& font, int size) {
    QFont sized(font.familyName());
    sized.setPixelSize(size);
    return QRawFont::fromFont(sized);
}

/// The font at the size at which lines are laid out, so that places are in proportion to the size of the
/// type.
QFont referenceFont(const QFont& font) {
    QFont reference = font;
    reference.setPixelSize(referenceSize);
    reference.setHintingPreference(QFont::PreferVerticalHinting);
    reference.setStyleStrategy(QFont::NoSubpixelAntialias); // grey edges, which look the same on every ground
    return reference;
}

} // namespace

double typeSize(const QFont& font) { return font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF(); }

QFont sizedFont(const QFont& font, double points) {
    QFont sized = font;
    sized.setPointSizeF(std::max(1.0, points));
    return sized;
}

TypeLine typeLine(const QString& text, const QFont& font) {
    QTextLayout layout(text, referenceFont(font));
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid())
        return {};

    const double scale = typeSize(font) / referenceSize;
    const QPointF origin(0, line.y() + line.ascent());
    TypeLine result{{}, line.naturalTextWidth() * scale};
    for (QGlyphRun glyphs : layout.glyphRuns()) {
        const bool coloured = isColoured(glyphs.rawFont());
        const double size = typeSize(font);
        // Pictures for glyphs are found only for a font of whole pixels, and enlarged from there.
        const double drawn = coloured ? std::clamp(std::round(size), 1.0, largestPictures) : size;
        QList<QPointF> positions = glyphs.positions();
        for (QPointF& position : positions)
            position = (position - origin) * (drawn / referenceSize);
        glyphs.setPositions(positions);
        glyphs.setRawFont(coloured ? pictureFont(glyphs.rawFont(), static_cast<int>(drawn))
                                   : sizedRawFont(glyphs.rawFont(), size));
        result.runs.push_back({glyphs, size / drawn, coloured});
    }
    return result;
}

TextInk measureInk(const QString& text, const QFont& font) {
    const TypeLine line = typeLine(text, font);
    TextInk measured{{}, line.advance};
    for (const TypeLine::Run& run : line.runs) {
        const QRectF ink = inkOfRun(run.glyphs);
        measured.ink |= QRectF(ink.topLeft() * run.scale, ink.size() * run.scale);
    }
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

QStringList wrappedToWidth(const QString& text, const QFont& font, double width, qsizetype most) {
    QString separated = text;
    separated.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(separated, referenceFont(font));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        if (lines.size() == most) {
            const qsizetype last = layout.lineAt(static_cast<int>(most) - 1).textStart();
            lines.back() = elidedToInk(text.mid(last).simplified(), font, width);
            break;
        }
        line.setLineWidth(width * referenceSize / typeSize(font));
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

std::vector<double> FigureCells::places(const QString& text, const QFont& font) const {
    std::vector<double> places;
    double x = 0;
    for (const QChar character : text) {
        const double advance = measureInk(QString(character), font).advance;
        const double cell = character == u':' ? colon : character.isDigit() ? figure : advance;
        places.push_back(x + (cell - advance) / 2);
        x += cell;
    }
    places.push_back(x);
    return places;
}

double FigureCells::width(const QString& text, const QFont& font) const { return places(text, font).back(); }

FigureCells figureCells(const QFont& font) {
    FigureCells cells;
    for (char16_t figure = u'0'; figure <= u'9'; ++figure)
        cells.figure = std::max(cells.figure, measureInk(QString(QChar(figure)), font).advance);
    cells.colon = measureInk(QStringLiteral(":"), font).advance;
    return cells;
}

} // namespace tarnwick
