#pragma once

#include <array>
#include <cmath>
#include <cstdint>

namespace tarnwick::painter {

constexpr float pi = 3.14159265358979F;
constexpr float turn = 2 * pi;

/// A number in 0…1 that looks random and is the same for the same arguments.
inline float hash(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    std::uint32_t h = (static_cast<std::uint32_t>(x) * 0x9E3779B1U) ^
                      (static_cast<std::uint32_t>(y) * 0x85EBCA77U) ^ (seed * 0xC2B2AE3DU);
    h ^= h >> 15;
    h *= 0x2C1B3C6DU;
    h ^= h >> 12;
    h *= 0x297A2D39U;
    h ^= h >> 15;
    return static_cast<float>(h) * (1.0F / 4294967296.0F);
}

inline float clamp(float x, float low, float high) { return x < low ? low : x > high ? high : x; }

/// Rises smoothly from 0 at `a` to 1 at `b`; falls when `a` is the larger.
inline float smoothStep(float a, float b, float x) {
    const float t = clamp((x - a) / (b - a), 0, 1);
    return t * t * (3 - 2 * t);
}

inline float mix(float a, float b, float t) { return a + (b - a) * t; }

inline float fade(float t) { return t * t * t * (t * (t * 6 - 15) + 10); }

/// A cell of the lattice along the turn and its neighbour, which wrap so that a turn closes.
struct Wrapped {
    std::int32_t here;
    std::int32_t next;
    float within;

    Wrapped(float u, int period) {
        const float cell = std::floor(u);
        within = u - cell;
        here = static_cast<std::int32_t>(cell) % period;
        if (here < 0)
            here += period;
        next = here + 1 == period ? 0 : here + 1;
    }
};

constexpr std::int32_t rowOffset = 4096; // keeps the rows of the lattice away from zero

/// Value noise, −1…1. `u` closes after `period`.
inline float valueNoise(float u, float v, int period, std::uint32_t seed) {
    const Wrapped x(u, period);
    const float row = std::floor(v);
    const auto y = static_cast<std::int32_t>(row) + rowOffset;
    const float fx = fade(x.within);
    const float fy = fade(v - row);
    const float top = mix(hash(x.here, y, seed), hash(x.next, y, seed), fx);
    const float bottom = mix(hash(x.here, y + 1, seed), hash(x.next, y + 1, seed), fx);
    return 2 * mix(top, bottom, fy) - 1;
}

/// Value noise of one variable, −1…1.
inline float valueNoise(float v, std::uint32_t seed) {
    const float row = std::floor(v);
    const auto y = static_cast<std::int32_t>(row) + rowOffset;
    return 2 * mix(hash(0, y, seed), hash(0, y + 1, seed), fade(v - row)) - 1;
}

/// The direction at a point of the lattice.
struct Direction {
    float x;
    float y;
};

inline Direction directionAt(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    constexpr std::size_t count = 1024;
    static const std::array<Direction, count> directions = [] {
        std::array<Direction, count> result{};
        for (std::size_t i = 0; i < count; ++i) {
            const float angle = turn * static_cast<float>(i) / static_cast<float>(count);
            result[i] = {std::cos(angle), std::sin(angle)};
        }
        return result;
    }();
    return directions[static_cast<std::size_t>(hash(x, y, seed) * count) & (count - 1)];
}

/// Gradient noise, about −1…1: it has none of the kinks that value noise shows in large soft shapes.
inline float gradientNoise(float u, float v, int period, std::uint32_t seed) {
    const Wrapped x(u, period);
    const float row = std::floor(v);
    const auto y = static_cast<std::int32_t>(row) + rowOffset;
    const float dy = v - row;
    const auto dot = [&](std::int32_t cx, std::int32_t cy, float ox, float oy) {
        const Direction d = directionAt(cx, cy, seed);
        return d.x * (x.within - ox) + d.y * (dy - oy);
    };
    const float fx = fade(x.within);
    const float top = mix(dot(x.here, y, 0, 0), dot(x.next, y, 1, 0), fx);
    const float bottom = mix(dot(x.here, y + 1, 0, 1), dot(x.next, y + 1, 1, 1), fx);
    return 1.5F * mix(top, bottom, fade(dy));
}

/// `octaves` layers of gradient noise, each twice as fine and `gain` times as strong as the one before.
inline float fractal(float u, float v, int period, int octaves, float gain, std::uint32_t seed) {
    float sum = 0;
    float amplitude = 1;
    float total = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += amplitude * gradientNoise(u, v, period, seed);
        total += amplitude;
        amplitude *= gain;
        u *= 2;
        v *= 2;
        period *= 2;
        seed += 101;
    }
    return sum / total;
}

} // namespace tarnwick::painter
