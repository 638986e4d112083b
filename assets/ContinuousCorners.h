#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tarnwick {

/// `rect` with corners that are superelliptic: their curvature comes and goes gradually, where that of an arc
/// jumps. A corner is cut as far as an arc of `radius` would cut it, and begins 1.3 times as far from it.
QPainterPath withContinuousCorners(const QRectF& rect, double radius);

} // namespace tarnwick
