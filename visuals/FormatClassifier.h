#pragma once

#include <QString>

namespace tarnwick {

/// The short lower-case code of the file format that a kind text names ("Apple Lossless audio file"
/// gives "alac"), "unknown" when it names none that is known. Letter case does not matter.
QString formatCode(const QString& kind);

} // namespace tarnwick
