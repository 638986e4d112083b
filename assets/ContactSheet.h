#pragma once

#include "assets/Catalogue.h"

namespace tarnwick {

/// Every picture of a catalogue with its whole name, kind by kind, as large as fits into `size` device
/// pixels.
QImage contactSheet(const Catalogue& catalogue, QSize size, bool isDark);

/// The size at which each name can be read.
QSize contactSheetSize(const Catalogue& catalogue);

} // namespace tarnwick
