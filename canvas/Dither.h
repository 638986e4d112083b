#pragma once

#include <QImage>

namespace tarnwick {

/// What to add to a value before it is rounded, -0.5 to 0.5, so that a slow gradient has no steps: an ordered
/// pattern of 8 by 8 pixels, each of its 64 thresholds once.
double ditherAt(int x, int y);

/// A picture of 16 bits a channel with 8, premultiplied.
QImage dithered(const QImage& deep);

} // namespace tarnwick
