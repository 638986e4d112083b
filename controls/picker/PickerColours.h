#pragma once

#include <QColor>
#include <QList>

namespace tarnwick {

/// Gradient colours laid over what makes them opaque: black under white text, white under black.
QList<QColor> opaqueColours(const QList<QColor>& gradientColors, const QColor& text);

/// What must lie between the dynamic picker's gradient and its card so that `text`, which is black or
/// white, keeps 4.5 : 1 on the card and on the row under the pointer: a darker or lighter kin of the
/// gradient's first colour, as transparent as possible.
QColor pickerVeil(const QList<QColor>& gradientColors, const QColor& text);

} // namespace tarnwick
