#pragma once

#include <QImage>

namespace tarnwick::players {

// Sleeves that look designed, each `coverSide` wide and high: shapes of one colour and type.

/// Flat geometry in four colours.
QImage paintShapes();

/// Black and white at full contrast, one yellow.
QImage paintCrossing();

/// Saturated, nothing but type.
QImage paintTypography();

/// Warm stripes on grainy paper, rounded like an old poster.
QImage paintStripes();

} // namespace tarnwick::players
