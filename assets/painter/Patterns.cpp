#include "assets/painter/Patterns.h"

namespace tarnwick::painter {

namespace {

class Plain : public Material {
public:
    explicit Plain(const Disc& disc) : m_tone(linearOf(disc.tones[0])), m_seed(disc.seed * 53) {}

    Rgb colourAt(const Point& point) const override {
        return m_tone * (1 + 0.05F * fractal(4 * point.u, 3 * point.r, 4, 3, 0.5F, m_seed));
    }

private:
    Rgb m_tone;
    std::uint32_t m_seed;
};

/// A glow from the label outwards.
class Sun : public Material {
public:
    explicit Sun(const Disc& disc) : m_seed(disc.seed * 53) {
        for (std::size_t i = 0; i < m_tones.size(); ++i)
            m_tones[i] = linearOf(disc.tones[i]);
    }

    Rgb colourAt(const Point& point) const override {
        constexpr std::array turns{0.12F, 0.36F, 0.62F, 0.90F};
        constexpr float softness = 0.17F;
        const float place = (point.r - 0.33F) / 0.64F +
                            0.16F * fractal(5 * point.u, 2 * point.r, 5, 4, 0.5F, m_seed) +
                            0.05F * fractal(18 * point.u, 3 * point.r, 18, 3, 0.5F, m_seed + 7);
        Rgb colour = m_tones[0];
        for (std::size_t i = 0; i < turns.size(); ++i)
            colour = mix(colour, m_tones[i + 1], smoothStep(turns[i] - softness, turns[i] + softness, place));
        return colour;
    }

private:
    std::array<Rgb, 5> m_tones;
    std::uint32_t m_seed;
};

/// A full turn of hues of nearly even luminance.
class Hues : public Material {
public:
    explicit Hues(const Disc& disc) : m_seed(disc.seed * 53) {}

    Rgb colourAt(const Point& point) const override {
        const float hue = turn * (point.u + 0.10F * (point.r - 0.6F) +
                                  0.018F * fractal(4 * point.u, 3 * point.r, 4, 3, 0.5F, m_seed));
        constexpr float third = turn / 3;
        const Rgb wave{0.42F + 0.40F * std::cos(hue), 0.36F + 0.36F * std::cos(hue - third),
                       0.44F + 0.42F * std::cos(hue - 2 * third)};
        const auto deepened = [](float v) { return std::pow(std::max(v, 0.0F), 1.25F); };
        const Rgb colour{deepened(wave.r), deepened(wave.g), deepened(wave.b)};
        return colour * std::pow(0.30F / std::max(colour.luminance(), 1e-4F), 0.30F);
    }

private:
    std::uint32_t m_seed;
};

/// Sectors that swirl a little.
class Stripes : public Material {
public:
    explicit Stripes(const Disc& disc)
        : m_first(linearOf(disc.tones[0])), m_second(linearOf(disc.tones[1])), m_seed(disc.seed * 53) {}

    Rgb colourAt(const Point& point) const override {
        const float phase = 8 * point.u + 0.25F * (point.r - 0.6F) +
                            0.11F * fractal(9 * point.u, 2.6F * point.r, 9, 2, 0.5F, m_seed);
        const float within = phase - std::floor(phase);
        const float distance = 0.25F - std::abs(within - 0.5F); // from the nearer edge, in pairs
        const float edge = 0.006F / std::max(point.r, 0.05F);
        return mix(m_first, m_second, smoothStep(-edge, edge, distance));
    }

private:
    Rgb m_first;
    Rgb m_second;
    std::uint32_t m_seed;
};

} // namespace

std::unique_ptr<Material> makeMaterial(const Disc& disc) {
    switch (disc.pattern) {
    case Pattern::Marble:
        return makeMarble(disc);
    case Pattern::Splatter:
        return makeSplatter(disc);
    case Pattern::Sun:
        return std::make_unique<Sun>(disc);
    case Pattern::Hues:
        return std::make_unique<Hues>(disc);
    case Pattern::Stripes:
        return std::make_unique<Stripes>(disc);
    default:
        return std::make_unique<Plain>(disc);
    }
}

} // namespace tarnwick::painter
