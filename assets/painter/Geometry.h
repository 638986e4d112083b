#pragma once

#include "assets/painter/Noise.h"

namespace tarnwick::painter {

constexpr int side = 1600;                      ///< of the finished picture, pixels
constexpr float radiusInPixels = 0.9975F * 800; ///< of the disc; a hair stays clear round it
constexpr float pixel = 1 / radiusInPixels;     ///< of the finished picture, in radii

// Where the light comes from: a lamp, a window on the other side, and the shade of raised edges.
constexpr float keyAzimuth = -38 * pi / 180;
constexpr float fillAzimuth = 33 * pi / 180;
constexpr float reliefAzimuth = -118 * pi / 180;

/// A point of the disc: x to the right, y down, the disc's radius 1.
struct Point {
    float x;
    float y;
    float r;
    float cosine; ///< of its azimuth
    float sine;
    float u; ///< its azimuth in turns, 0…1

    Point(float x_, float y_) : x(x_), y(y_), r(std::sqrt(x_ * x_ + y_ * y_)) {
        cosine = r > 0 ? x / r : 1;
        sine = r > 0 ? y / r : 0;
        u = std::atan2(y, x) / turn + 0.5F;
    }

    /// How far it faces an azimuth, −1…1.
    float facing(float azimuth) const { return cosine * std::cos(azimuth) + sine * std::sin(azimuth); }
    /// How far it stands across it, −1…1.
    float across(float azimuth) const { return sine * std::cos(azimuth) - cosine * std::sin(azimuth); }

    /// The middle of a pixel.
    static Point ofPixel(int column, int row) {
        return {(static_cast<float>(column) + 0.5F - side / 2.0F) * pixel,
                (static_cast<float>(row) + 0.5F - side / 2.0F) * pixel};
    }
};

/// How much of a pixel at distance `d` (in radii, positive outside) from an edge is inside.
inline float coverage(float d) { return clamp(0.5F - d / pixel, 0, 1); }

} // namespace tarnwick::painter
