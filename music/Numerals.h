#pragma once

#include <QString>

#include <optional>

namespace tarnwick {

/// An optional sign and decimal digits, nothing else, within 64 bits; none otherwise.
std::optional<qint64> decimalInteger(const QString& text);

/// What a C-locale strtod reads, when it reads the whole text and the text does not begin with white
/// space; none otherwise.
std::optional<double> decimalFloat(const QString& text);

} // namespace tarnwick
