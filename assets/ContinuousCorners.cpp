#include "assets/ContinuousCorners.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

QPainterPath withContinuousCorners(const QRectF& rect, double radius) {
    constexpr double reach = 1.3;
    // Solved for the middle of the corner: sqrt(2) reach (1 - 2^(-1/n)) = sqrt(2) - 1.
    const double exponent = -1 / std::log2(1 - (std::sqrt(2) - 1) / (std::sqrt(2) * reach));
    constexpr int steps = 24; // of a corner
    const double side = std::min({reach * radius, rect.width() / 2, rect.height() / 2});
    QPainterPath path;
    if (side <= 0) {
        path.addRect(rect);
        return path;
    }
    const struct {
        QPointF centre;
        double right, down; // where the corner lies from it
        bool fromSide;      // clockwise it begins at a side of the rectangle, not at its top or bottom
    } corners[] = {{{rect.right() - side, rect.top() + side}, 1, -1, false},
                   {{rect.right() - side, rect.bottom() - side}, 1, 1, true},
                   {{rect.left() + side, rect.bottom() - side}, -1, 1, false},
                   {{rect.left() + side, rect.top() + side}, -1, -1, true}};
    for (const auto& corner : corners) {
        for (int i = 0; i <= steps; ++i) {
            const double turn = M_PI / 2 * (corner.fromSide ? i : steps - i) / steps;
            const QPointF point =
                corner.centre + QPointF(corner.right * side * std::pow(std::cos(turn), 2 / exponent),
                                        corner.down * side * std::pow(std::sin(turn), 2 / exponent));
            if (path.elementCount() == 0)
                path.moveTo(point);
            else
                path.lineTo(point);
        }
    }
    path.closeSubpath();
    return path;
}

} // namespace tarnwick
