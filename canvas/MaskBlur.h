#pragma once

#include <QImage>

namespace tarnwick {

/// Blurs an alpha mask (`Format_Alpha8`), for soft shadows: three box passes, near a gaussian of a third of
/// `radius`, that reach `radius` pixels far. Beyond the mask's edge there is nothing. Takes milliseconds.
void blurMask(QImage& mask, double radius);

} // namespace tarnwick
