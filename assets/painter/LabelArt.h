#pragma once

#include "assets/painter/DiscTable.h"

#include <QImage>

namespace tarnwick::painter {

/// What is printed on a disc: its paper label, or the ink on it where there is no paper. As large as
/// the finished picture, straight alpha, transparent where nothing is printed. Null when the disc bears
/// no print.
QImage labelArt(const Disc& disc);

/// The radius up to which the print of a disc reaches, 0 when it bears none.
float labelRadius(const Disc& disc);

} // namespace tarnwick::painter
