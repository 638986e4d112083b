#pragma once

#include "assets/Catalogue.h"

namespace tarnwick {

/// Every picture of a catalogue with its name, kind by kind, as large as fits into `size` device pixels.
QImage contactSheet(const Catalogue& catalogue, QSize size);

} // namespace tarnwick
