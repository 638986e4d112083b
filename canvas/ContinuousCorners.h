#pragma once

#include <QPainterPath>

namespace tarnwick {

/// `rect` with corners that run into its sides without a break in their curvature: quarters of a superellipse
/// that cut off as much of the corner as arcs of `radius` do. A radius of half the smaller side or more gives
/// round ends or an ellipse of equal sides.
QPainterPath continuousRectangle(const QRectF& rect, double radius);

} // namespace tarnwick
