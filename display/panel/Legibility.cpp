#include "display/panel/Legibility.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double largeType = 30; // points
constexpr Colour green{0x30 / 255.0, 0xd1 / 255.0, 0x58 / 255.0, 1};
constexpr Colour darkGreen{0x1e / 255.0, 0x7a / 255.0, 0x34 / 255.0, 1};
constexpr int alphaSteps = 9;

double toLinear(double component) {
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double toEncoded(double component) {
    return component <= 0.03928 / 12.92 ? component * 12.92 : 1.055 * std::pow(component, 1 / 2.4) - 0.055;
}

/// `toLinear` of 8-bit steps and what lies between them; made once.
class LinearTable {
public:
    LinearTable() {
        for (size_t i = 0; i < m_values.size(); ++i)
            m_values[i] = toLinear(static_cast<double>(i) / steps);
    }
    double operator()(double component) const {
        const double position = std::clamp(component, 0.0, 1.0) * steps;
        const auto index = static_cast<size_t>(position);
        if (index >= steps)
            return 1;
        return m_values[index] +
               (position - static_cast<double>(index)) * (m_values[index + 1] - m_values[index]);
    }

private:
    static constexpr size_t steps = 1024;
    std::array<double, steps + 1> m_values{};
};

double luminanceOf(const Colour& colour) {
    static const LinearTable linear;
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

/// In linear light: a white text's ground is scaled down, a black text's is mixed with white.
Colour moved(const Colour& tint, bool lighter, double amount) {
    const auto component = [&](double value) {
        const double light = toLinear(value);
        return toEncoded(lighter ? light + amount * (1 - light) : light * (1 - amount));
    };
    return {component(tint.red), component(tint.green), component(tint.blue), 1};
}

/// The smallest amount from 0 to 1 at which `holds` is true; it is true from there on.
template <typename Holds>
double smallest(int steps, Holds holds) {
    double low = 0;
    double high = 1;
    for (int step = 0; step < steps; ++step) {
        const double middle = (low + high) / 2;
        (holds(middle) ? high : low) = middle;
    }
    return high;
}

} // namespace

double neededContrast(double points) { return points >= largeType ? 3 : 4.5; }

double contrastOver(const Colour& text, const Colour& under) {
    return contrastRatio(luminanceOf(text), luminanceOf(under));
}

Colour mixed(const Colour& under, const Colour& veil, double alpha) {
    const auto mix = [alpha](double from, double to) { return from + alpha * (to - from); };
    return {mix(under.red, veil.red), mix(under.green, veil.green), mix(under.blue, veil.blue), 1};
}

Colour veilColour(const Colour& tint, const Colour& text, double ratio) {
    constexpr int steps = 20;
    const Colour opaque{tint.red, tint.green, tint.blue, 1};
    if (contrastOver(text, opaque) >= ratio)
        return opaque;
    const bool lighter = text == colours::black;
    return moved(opaque, lighter, smallest(steps, [&](double amount) {
                     return contrastOver(text, moved(opaque, lighter, amount)) >= ratio;
                 }));
}

double neededAlpha(const Colour& text, const Colour& under, const Colour& veil, double ratio,
                   const Colour& over) {
    const auto holds = [&](double alpha) {
        return contrastOver(text, mixed(mixed(under, veil, alpha), over, over.alpha)) >= ratio;
    };
    return holds(0) ? 0 : smallest(alphaSteps, holds);
}

bool isHarder(const Colour& text, const Colour& colour, const Colour& other) {
    return contrastOver(text, colour) < contrastOver(text, other);
}

Colour progressGreen(const Colour& text, const Colour& background) {
    constexpr int steps = 8;
    constexpr double ratio = 3;
    const Colour start = text == colours::white ? green : darkGreen;
    const double ground = luminanceOf(background);
    const auto holds = [&](double amount) {
        return contrastRatio(luminanceOf(mixed(start, text, amount)), ground) >= ratio;
    };
    return holds(0) ? start : mixed(start, text, smallest(steps, holds));
}

} // namespace tarnwick
