#pragma once

#include "assets/painter/Noise.h"

#include <algorithm>

namespace tarnwick::painter {

/// A colour in linear light.
struct Rgb {
    float r = 0;
    float g = 0;
    float b = 0;

    friend Rgb operator+(Rgb a, Rgb c) { return {a.r + c.r, a.g + c.g, a.b + c.b}; }
    friend Rgb operator*(Rgb a, Rgb c) { return {a.r * c.r, a.g * c.g, a.b * c.b}; }
    friend Rgb operator*(Rgb a, float f) { return {a.r * f, a.g * f, a.b * f}; }
    Rgb& operator+=(Rgb c) { return *this = *this + c; }
    Rgb& operator*=(float f) { return *this = *this * f; }

    float highest() const { return std::max({r, g, b}); }
    float luminance() const { return 0.2126F * r + 0.7152F * g + 0.0722F * b; }
};

inline Rgb mix(Rgb a, Rgb b, float t) { return a * (1 - t) + b * t; }

/// One point of a disc: colour multiplied by coverage, and coverage.
struct Sample {
    Rgb colour;
    float alpha = 0;
};

inline float toLinear(float encoded) {
    return encoded <= 0.04045F ? encoded / 12.92F : std::pow((encoded + 0.055F) / 1.055F, 2.4F);
}

inline float toEncoded(float linear) {
    return linear <= 0.0031308F ? linear * 12.92F : 1.055F * std::pow(linear, 1 / 2.4F) - 0.055F;
}

/// From 0xRRGGBB in sRGB.
inline Rgb linearOf(std::uint32_t rgb) {
    return {toLinear(static_cast<float>(rgb >> 16 & 0xFF) / 255),
            toLinear(static_cast<float>(rgb >> 8 & 0xFF) / 255),
            toLinear(static_cast<float>(rgb & 0xFF) / 255)};
}

/// A hill or line of gaussian profile round `centre`.
inline float bell(float x, float centre, float width) {
    const float t = (x - centre) / width;
    return std::exp(-t * t);
}

} // namespace tarnwick::painter
