#include "canvas/ContinuousCorners.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarnwick {

namespace {

/// How far a corner reaches along its sides, in radii, where there is room.
constexpr double reachOfCorner = 1.5;

/// Enough that no corner of a large screen's picture shows its chords.
constexpr int chords = 48;

/// Of the superellipse of half-axis `reach` that cuts off as much on the diagonal as an arc of `radius`.
double exponent(double radius, double reach) {
    const double diagonal = 1 - (1 - std::numbers::sqrt2 / 2) * radius / reach;
    return std::numbers::ln2 / -std::log(diagonal);
}

} // namespace

QPainterPath continuousRectangle(const QRectF& rect, double radius) {
    const double half = std::min(rect.width(), rect.height()) / 2;
    const double round = std::min(radius, half);
    QPainterPath path;
    if (round <= 0) {
        path.addRect(rect);
        return path;
    }
    const double reach = std::min(reachOfCorner * round, half);
    const double power = 2 / exponent(round, reach);
    QPolygonF outline;
    for (int corner = 0; corner < 4; ++corner) { // top left, top right, bottom right, bottom left
        const bool isRight = corner == 1 || corner == 2;
        const bool isBottom = corner >= 2;
        for (int i = 0; i <= chords; ++i) {
            const double angle = std::numbers::pi / 2 * (corner % 2 == 0 ? chords - i : i) / chords;
            const double x = reach * (1 - std::pow(std::sin(angle), power));
            const double y = reach * (1 - std::pow(std::max(0.0, std::cos(angle)), power));
            outline.append({isRight ? rect.right() - x : rect.left() + x,
                            isBottom ? rect.bottom() - y : rect.top() + y});
        }
    }
    path.addPolygon(outline);
    path.closeSubpath();
    return path;
}

} // namespace tarnwick
