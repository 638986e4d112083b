#pragma once

#include "display/veil/Veils.h"

namespace tarnwick {

/// What a veil is clipped to inside the rectangle of its surface.
struct VeilOutline {
    double radius = 0; ///< of the corners, or of the circle in the middle; points
    bool round = false;
    QImage picture{}; ///< the outline is what this picture covers, where it is not null
};

/// The part of `field` over `surface` as a picture in `colour`, in `scale` pixels of a point. Dithered, so
/// that no steps are seen. `surface` is in points of the window.
VeilPicture paintVeil(const VeilField& field, const Colour& colour, const QRectF& surface,
                      const VeilOutline& outline, double scale);

} // namespace tarnwick
