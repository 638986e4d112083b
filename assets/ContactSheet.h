#pragma once

#include "assets/Catalogue.h"

namespace tarnwick {

/// The size at which a contact sheet of the catalogue shows everything large enough to be looked at and read.
QSize contactSheetSize(const Catalogue& catalogue);

/// Every picture of a catalogue with its whole name, kind by kind, as large as fits into `size` device
/// pixels, on a grey ground or on one that is nearly black.
QImage contactSheet(const Catalogue& catalogue, QSize size, bool isDark = false);

} // namespace tarnwick
