#pragma once

#include "visuals/CoverAnalysis.h"

namespace tarnwick {

/// What a background style publishes for one cover.
struct StylePalette {
    BackgroundOption style;
    std::vector<Colour> gradientColors;
    std::vector<Colour> darkGradientColors;
    Colour dynamicTextColor;
};

/// The palettes of every style but `random`, in the order of `BackgroundManager::randomChoices`, each as
/// a manager that has published nothing before shows it. `cover` is RGBA8888 with packed rows, or null.
std::vector<StylePalette> paletteOf(const QImage& cover);

} // namespace tarnwick
