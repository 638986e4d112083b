#include "assets/painter/GrooveLight.h"

#include "assets/painter/Linear.h"

namespace tarnwick::painter {

namespace {

/// Wave lengths in pixels and strengths of the grooves. None is finer than the picture can hold, and
/// each size on screen finds some that it can show.
struct Octave {
    float length;
    float strength;
};
constexpr std::array octaves{Octave{2.6F, 0.95F}, Octave{4.1F, 0.80F}, Octave{7.3F, 0.55F},
                             Octave{13, 0.45F},   Octave{29, 0.30F},   Octave{71, 0.20F}};

float grooveAt(float r, std::uint32_t seed) {
    float sum = 0;
    for (const Octave& octave : octaves) {
        sum += octave.strength * valueNoise(r / (octave.length * pixel), seed);
        seed += 17;
    }
    return sum / 1.05F;
}

float bandAt(const Disc& disc, float r) {
    float result = 0;
    std::int32_t index = 0;
    for (const float centre : bandRadii(disc.bands)) {
        const float halfWidth = 0.0030F + 0.0016F * hash(index++, 7, disc.seed);
        result = std::max(result, smoothStep(halfWidth + 0.0012F, halfWidth - 0.0004F, std::abs(r - centre)));
    }
    return result;
}

float bandLinesAt(const Disc& disc, float r) {
    float result = 0;
    for (const float centre : bandRadii(disc.bands))
        result += bell(std::abs(r - centre), 0.0056F, 0.0013F);
    return result;
}

float roughZone(const Disc& disc, float r) {
    constexpr float soft = 0.0012F;
    return smoothStep(disc.zones.wax - soft, disc.zones.wax + soft, r) *
           smoothStep(disc.zones.end + soft, disc.zones.end - soft, r);
}

} // namespace

GrooveLight::GrooveLight(const Disc& disc)
    : m_disc(disc), m_groove(0.55F, [&](float r) { return grooveAt(r, disc.seed * 31); }),
      m_jitter(0.4F,
               [&](float r) {
                   return 0.05F * (0.6F * valueNoise(19 * r, disc.seed * 31 + 200) +
                                   0.4F * valueNoise(57 * r, disc.seed * 31 + 201));
               }),
      m_loud(3.2F,
             [&](float r) {
                 return 0.5F + 0.25F * valueNoise(11 * r, disc.seed * 31 + 202) +
                        0.25F * valueNoise(37 * r, disc.seed * 31 + 203);
             }),
      m_grow(0.4F,
             [&](float r) {
                 const float t = clamp((r - disc.zones.wax) / (disc.zones.end - disc.zones.wax), 0, 1);
                 return 0.50F + 0.62F * std::pow(t, 1.4F);
             }),
      m_rough(0.4F, [&](float r) { return roughZone(disc, r) * (1 - bandAt(disc, r)); }),
      m_band(0.4F, [&](float r) { return bandAt(disc, r); }),
      m_bandLines(0.4F, [&](float r) { return bandLinesAt(disc, r); }),
      m_smooth(0.4F, [&](float r) { return 1 - roughZone(disc, r); }) {}

float GrooveLight::wave(const Point& point) const {
    if (m_disc.zones.wax != flexi.wax)
        return 0;
    return 0.55F * gradientNoise(7 * point.u, 4.2F * point.r, 7, m_disc.seed * 31 + 210) +
           0.14F * gradientNoise(15 * point.u, 6 * point.r, 15, m_disc.seed * 31 + 211);
}

Lit GrooveLight::at(const Point& point) const {
    Lit lit{};
    lit.wave = wave(point);
    const float jitter = m_jitter.at(point.r) + lit.wave;
    const auto lobe = [&](float azimuth, float width) {
        const float t = (point.across(azimuth) + jitter) / width;
        return std::exp(-t * t);
    };
    const float side1 = 0.88F + 0.12F * point.facing(keyAzimuth);
    lit.broad = (lobe(keyAzimuth, 0.31F) + 0.34F * lobe(fillAzimuth, 0.25F)) * side1;
    lit.core = (lobe(keyAzimuth, 0.085F) + 0.30F * lobe(fillAzimuth, 0.07F)) * side1;
    const std::uint32_t seed = m_disc.seed * 31 + 220;
    lit.streaks = 0.42F * valueNoise(14 * point.u, point.r / (3.2F * pixel), 14, seed) +
                  0.34F * valueNoise(34 * point.u, point.r / (6.5F * pixel), 34, seed + 1) +
                  0.42F * valueNoise(9 * point.u, point.r / (17 * pixel), 9, seed + 2);
    lit.groove = m_groove.at(point.r);
    lit.rough = m_rough.at(point.r);
    lit.grow = m_grow.at(point.r);
    const float loud = m_loud.at(point.r);
    lit.sheen = lit.rough * lit.grow *
                (0.62F * lit.broad * (1 + 0.55F * lit.streaks + 0.34F * lit.groove) * (0.72F + 0.56F * loud) +
                 0.50F * lit.core * (1 + 0.85F * lit.streaks + 0.5F * lit.groove));
    lit.gloss = (1 - lit.rough) * (0.30F * lit.broad + 0.26F * lit.core) * (0.8F + 0.2F * lit.grow);
    return lit;
}

} // namespace tarnwick::painter
