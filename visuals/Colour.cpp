#include "visuals/Colour.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

double linear(double component) {
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

} // namespace

QColor Colour::toQColor() const {
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
                            static_cast<float>(alpha));
}

Colour Colour::fromQColor(const QColor& colour) {
    return {colour.redF(), colour.greenF(), colour.blueF(), colour.alphaF()};
}

double relativeLuminance(const Colour& colour) {
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

double contrastRatio(double luminance, double other) {
    return (std::max(luminance, other) + 0.05) / (std::min(luminance, other) + 0.05);
}

Colour contrastingTextColor(const Colour& background) {
    const double luminance = relativeLuminance(background);
    const double withWhite = contrastRatio(luminance, relativeLuminance(colours::white));
    const double withBlack = contrastRatio(luminance, relativeLuminance(colours::black));
    return withBlack < withWhite ? colours::white : colours::black;
}

Colour darkenColor(const Colour& colour, double factor) {
    return {std::max(colour.red * factor, 0.0), std::max(colour.green * factor, 0.0),
            std::max(colour.blue * factor, 0.0), colour.alpha};
}

Colour brightenColor(const Colour& colour) {
    constexpr double factor = 1.3;
    return {std::min(colour.red * factor, 1.0), std::min(colour.green * factor, 1.0),
            std::min(colour.blue * factor, 1.0), colour.alpha};
}

Colour saturateColor(const Colour& colour, double factor) {
    const double highest = std::max({colour.red, colour.green, colour.blue});
    const double lowest = std::min({colour.red, colour.green, colour.blue});
    if (highest <= lowest)
        return colour; // a grey has no hue that could be strengthened
    // Hue and brightness stay when every component keeps its place between the highest and the lowest.
    const double saturation = std::min((highest - lowest) / highest * factor, 1.0);
    const auto moved = [&](double component) {
        return highest * (1 - saturation * (highest - component) / (highest - lowest));
    };
    return {moved(colour.red), moved(colour.green), moved(colour.blue), colour.alpha};
}

double luma601(const Colour& colour) {
    return 0.299 * colour.red + 0.587 * colour.green + 0.114 * colour.blue;
}

} // namespace tarnwick
