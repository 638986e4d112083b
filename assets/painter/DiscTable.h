#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace tarnwick::painter {

enum class Pattern { Plain, Marble, Splatter, Sun, Hues, Stripes, CompactDisc, Reel };

enum class LabelStyle {
    None,
    Classic,
    Half,
    Band,
    RingType,
    Mini,
    Bee,
    Rays,
    Rings,
    Wing,
    House,
    Deck,
    Juke,
    Print,
    TapeHub,
};

/// Where a record's zones end, as fractions of its radius.
struct Zones {
    float label;
    float wax;
    float end;
    float hole;
};

inline constexpr Zones twelveInch{0.33F, 0.40F, 0.970F, 0.024F};
inline constexpr Zones sevenInch{0.50F, 0.56F, 0.970F, 0.041F};
inline constexpr Zones jukebox{0.50F, 0.56F, 0.970F, 0.220F};
inline constexpr Zones flexi{0.50F, 0.53F, 0.965F, 0.041F};
inline constexpr Zones reelZones{0.30F, 0.31F, 0.985F, 0.050F};
inline constexpr Zones compactDisc{0.33F, 0.33F, 0.970F, 0.125F};

struct Label {
    LabelStyle style = LabelStyle::None;
    std::uint32_t paper = 0;
    std::uint32_t ink = 0;
    std::uint32_t accent = 0;
    bool inkOnly = false; ///< printed on the record itself
};

/// Drops of one colour.
struct Drops {
    std::uint32_t colour = 0;
    int count = 0;
    float big = 0; ///< size of the largest, as a fraction of the radius
};

/// How light meets the material.
struct Surface {
    float shine = 0.17F;
    float rim = 0.16F; ///< how much thinner the edge looks
    std::uint32_t tint = 0xFFFCF6;
    float hued = 0.5F; ///< how much of the light takes the material's hue
    float gain = 0.42F;
    float k = 0.88F;
    float emb = 0.10F;
    float flake = 0;
    float alpha = 1;
    int dust = 70;
};

/// What the windows of a reel show.
struct ReelLook {
    float windowFrom = 0;
    float windowTo = 0;
    float halfSpoke = 0;
    float wound = 0; ///< the radius to which tape is wound
    bool clearFlange = false;
    int screws = 0;
};

/// What one disc is.
struct Disc {
    std::string_view tag;
    std::uint32_t seed;
    Pattern pattern;
    std::array<std::uint32_t, 5> tones; ///< sRGB, as many as the pattern has
    Zones zones;
    Label label;
    int bands = 0;
    Surface surface = {};
    std::array<Drops, 3> drops = {};
    std::uint32_t pour = 0;                       ///< which of the many pours that a seed can give
    std::array<float, 2> shares = {0.36F, 0.70F}; ///< of a pour: where the second and third tone begin
    float rainbow = 0;
    ReelLook reel = {};
};

/// Every disc of the catalogue.
std::span<const Disc> discs();

/// Where the darker bands between the tracks lie.
std::span<const float> bandRadii(int bands);

} // namespace tarnwick::painter
