#pragma once

#include "visuals/Colour.h"

#include <QString>

#include <optional>

namespace tarnwick {

/// The catalogue's name of the logo of a format code, white where the text is white and black otherwise.
/// None for a code that has no logo.
std::optional<QString> formatLogoName(const QString& code, const Colour& textColor);

} // namespace tarnwick
