#include "visuals/Palette.h"

#include "visuals/BackgroundManager.h"

namespace tarnwick {

std::vector<StylePalette> paletteOf(const QImage& cover) {
    std::vector<StylePalette> result;
    for (const BackgroundOption style : BackgroundManager::randomChoices) {
        BackgroundColours found = analyse(style, cover);
        if (found.darkPair.empty())
            found.darkPair = {colours::black, colours::black};
        result.push_back({style, found.gradient, found.darkPair, found.text});
    }
    return result;
}

} // namespace tarnwick
