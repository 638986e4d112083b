#pragma once

#include "controls/bar/Backdrop.h"

#include <QImage>

namespace tarnwick {

/// The panel at `rect` (in the backdrop's units) as a picture of `size` device pixels, premultiplied:
/// what is behind it blurred, a little more colourful and darkened, with round corners of `radius` and a
/// fine light edge. A turning record is seen as its mean over a turn. Takes milliseconds: call it off the
/// main thread.
QImage frostedPanel(const Backdrop& backdrop, const QRectF& rect, double radius, QSize size);

} // namespace tarnwick
