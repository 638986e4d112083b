#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QRectF>
#include <QString>

#include <vector>

namespace tarnwick {

// How text is measured and painted, whatever the screen. A font's size is its pixel size where it has one,
// else its point size, and either stands for points; a point is whatever unit the caller lays out in.

/// The size of `font`, in points.
double typeSize(const QFont& font);

/// `font` at another size, which may be a fraction, in points.
QFont sizedFont(const QFont& font, double points);

/// The glyphs of one line of any script, in points from where it begins on its baseline. Their places are in
/// proportion to the size of the type, and are not rounded.
struct TypeLine {
    /// Glyphs of one font.
    struct Run {
        QGlyphRun glyphs;
        double scale = 1;        ///< what the glyphs and their places are to be enlarged by
        bool isColoured = false; ///< they bring their own colours
    };
    std::vector<Run> runs;
    double advance = 0; ///< from the beginning of the line to where the next text would begin
};

TypeLine typeLine(const QString& text, const QFont& font);

/// Where the ink of one line of text falls, in points, relative to the point where the line begins on its
/// baseline. Text without ink has an empty rectangle.
struct TextInk {
    QRectF ink;
    double advance = 0; ///< from the beginning of the line to where the next text would begin
};

/// Measures one line of any script, as `TypeItem` paints it.
TextInk measureInk(const QString& text, const QFont& font);

/// `text` as it stands when its ink is at most `width` wide, else cut and ended with `ending`; empty when
/// not even one character of it fits.
QString elidedToInk(const QString& text, const QFont& font, double width,
                    const QString& ending = QStringLiteral("…"));

/// `text` in at most `most` lines that are at most `width` wide, broken between its words, or within one that
/// is wider alone. What does not fit is left out, and the last line ends in "…".
QStringList wrappedToWidth(const QString& text, const QFont& font, double width, qsizetype most);

/// The widths in which the characters of a time stand, so that they keep their places whatever they are.
struct FigureCells {
    double figure = 0; ///< the widest figure's
    double colon = 0;

    /// How far from the beginning each character of `text` begins, and last how wide all of it is. Figures
    /// stand in the middle of their cells, others than figures and colons take the room that they need.
    std::vector<double> places(const QString& text, const QFont& font) const;

    /// How wide `text` is.
    double width(const QString& text, const QFont& font) const;
};

/// The cells of a font.
FigureCells figureCells(const QFont& font);

} // namespace tarnwick
