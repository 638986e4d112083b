#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

namespace tarnwick {

/// Where the ink of one line of text falls, in logical pixels, relative to the point where the line
/// begins on its baseline. Text without ink has an empty rectangle.
struct TextInk {
    QRectF ink;
    double advance = 0; ///< from the beginning of the line to where the next text would begin
};

/// Measures one line of any script, as a Qt Quick `Text` without a width draws it.
TextInk measureInk(const QString& text, const QFont& font);

/// `text` as it stands when its ink is at most `width` wide, else cut and ended with `ending`; empty when
/// not even one character of it fits.
QString elidedToInk(const QString& text, const QFont& font, double width,
                    const QString& ending = QStringLiteral("…"));

} // namespace tarnwick
