#pragma once

#include <QColor>

namespace tarnwick {

/// A colour in sRGB. Each component lies in 0…1; alpha is straight.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend bool operator==(const Colour&, const Colour&) = default;

    QColor toQColor() const;
    static Colour fromQColor(const QColor& colour);
};

namespace colours {
inline constexpr Colour black{0, 0, 0, 1};
inline constexpr Colour white{1, 1, 1, 1};
inline constexpr Colour grey{0.5, 0.5, 0.5, 1};
} // namespace colours

/// Relative luminance as the WCAG defines it, 0 for black to 1 for white. Alpha does not count.
double relativeLuminance(const Colour& colour);

/// The contrast of two luminances, 1 to 21, whichever of them is the lighter.
double contrastRatio(double luminance, double other);

/// White or black, whichever has the higher contrast with `background`; black when both have the same.
Colour contrastingTextColor(const Colour& background);

/// Red, green and blue times `factor` (0 or more), never below 0.
Colour darkenColor(const Colour& colour, double factor);

/// Red, green and blue times 1.3, never above 1.
Colour brightenColor(const Colour& colour);

/// The same hue and brightness with the saturation times `factor` (0 or more), never above 1.
Colour saturateColor(const Colour& colour, double factor);

/// Luma after Rec. 601, 0…1.
double luma601(const Colour& colour);

} // namespace tarnwick
