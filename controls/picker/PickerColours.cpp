#include "controls/picker/PickerColours.h"

#include "visuals/Colour.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double veilContrast = 15;
constexpr double neededContrast = 4.5;
constexpr double cardOpacity = 0.2;
constexpr double hoverOpacity = 0.1;
constexpr int bisections = 12;

Colour mixed(const Colour& under, const Colour& over, double opacity) {
    const auto mix = [opacity](double a, double b) { return a + (b - a) * opacity; };
    return {mix(under.red, over.red), mix(under.green, over.green), mix(under.blue, over.blue), 1};
}

double linear(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}
double encoded(double value) {
    return value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
}

/// In linear light scaled down towards black, or mixed with white; `amount` from 0 to 1.
Colour moved(const Colour& colour, bool towardsBlack, double amount) {
    const auto move = [&](double channel) {
        const double light = linear(channel);
        return encoded(towardsBlack ? light * (1 - amount) : light + (1 - light) * amount);
    };
    return {move(colour.red), move(colour.green), move(colour.blue), 1};
}

/// The smallest amount, 0 to 1, for which `isEnough`, which must not turn false again.
template <typename Predicate>
double smallest(Predicate isEnough) {
    if (isEnough(0.0))
        return 0;
    double low = 0, high = 1;
    for (int i = 0; i < bisections; ++i) {
        const double middle = (low + high) / 2;
        (isEnough(middle) ? high : low) = middle;
    }
    return high;
}

} // namespace

QList<QColor> opaqueColours(const QList<QColor>& gradientColors, const QColor& text) {
    const Colour base = text == Qt::white ? colours::black : colours::white;
    QList<QColor> opaque;
    for (const QColor& each : gradientColors)
        opaque.append(mixed(base, Colour::fromQColor(each), each.alphaF()).toQColor());
    return opaque;
}

QColor pickerVeil(const QList<QColor>& gradientColors, const QColor& text) {
    if (gradientColors.isEmpty())
        return Qt::transparent;
    const Colour textColour = Colour::fromQColor(text);
    const double textLuminance = relativeLuminance(textColour);
    const auto contrast = [&](const Colour& colour) {
        return contrastRatio(textLuminance, relativeLuminance(colour));
    };
    const QList<QColor> opaque = opaqueColours(gradientColors, text);
    const bool isWhite = text == Qt::white;
    const Colour first = Colour::fromQColor(opaque.first());
    const Colour veil = moved(first, isWhite, smallest([&](double amount) {
                                  return contrast(moved(first, isWhite, amount)) >= veilContrast;
                              }));
    const double alpha = smallest([&](double opacity) {
        return std::all_of(opaque.begin(), opaque.end(), [&](const QColor& stop) {
            const Colour card =
                mixed(mixed(Colour::fromQColor(stop), veil, opacity), textColour, cardOpacity);
            const Colour hovered = mixed(card, colours::white, hoverOpacity);
            return std::min(contrast(card), contrast(hovered)) >= neededContrast;
        });
    });
    QColor result = veil.toQColor();
    result.setAlphaF(float(alpha));
    return result;
}

} // namespace tarnwick
