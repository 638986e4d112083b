#include "assets/painter/DiscShader.h"
#include "assets/painter/LabelArt.h"
#include "assets/painter/RadialTable.h"

namespace tarnwick::painter {

namespace {

constexpr float metalFrom = 0.330F;
constexpr float metalTo = 0.970F;
constexpr float dataFrom = 0.387F;
constexpr float dataTo = 0.957F;

/// Lamps beside each other, whose spectra the fine track fans out.
struct Fan {
    float azimuth;
    float spread;
    float width;
    float k0;
    float k1;
    float k2;
    float strength;
};
constexpr std::array fans{Fan{keyAzimuth + 0.02F, 0.40F, 0.085F, 0.57F, 0.27F, 0.26F, 1.0F},
                          Fan{fillAzimuth + 0.50F, 0.20F, 0.07F, 0.50F, 0.20F, -0.22F, 0.5F}};
constexpr int lamps = 9;

/// The light of one wave length.
Rgb spectral(float nanometres) {
    const auto peak = [&](float centre, float width) { return bell(nanometres, centre, width); };
    return {peak(615, 52) + 0.28F * peak(432, 26), peak(540, 46), peak(458, 36)};
}

constexpr std::array orders{1.0F, 0.85F, 0.40F};

/// The light that a grating sends back at an obliqueness, the first `count` orders together.
Rgb diffracted(float obliqueness, std::size_t count) {
    Rgb sum;
    for (std::size_t i = 0; i < count; ++i)
        sum += spectral(1600 * obliqueness / static_cast<float>(i + 1)) * orders[i];
    return sum;
}

class CompactDisc : public DiscShader {
public:
    explicit CompactDisc(const Disc& disc)
        : m_disc(disc), m_print(labelArt(disc)), m_tone(linearOf(disc.tones[0])),
          m_ripple(0.6F,
                   [&](float r) {
                       return 0.5F * valueNoise(r / (3.1F * pixel), disc.seed + 5) +
                              0.5F * valueNoise(r / (17 * pixel), disc.seed + 6);
                   }),
          m_relief(0.4F, [](float r) { return reliefAt(r); }) {
        for (std::size_t i = 0; i < m_spectrum.size(); ++i) {
            const float u = spectrumReach * static_cast<float>(i) / static_cast<float>(m_spectrum.size());
            m_spectrum[i] = diffracted(u, orders.size());
            m_firstOrder[i] = diffracted(u, 1);
        }
    }

    Sample at(int column, int row) const override {
        const Point point = Point::ofPixel(column, row);
        const float inside = coverage(point.r - 1) * coverage(m_disc.zones.hole - point.r);
        if (inside <= 0)
            return {};
        const float metal = coverage(point.r - metalTo) * coverage(metalFrom - point.r);
        Sample sample = plasticAt(point);
        if (metal > 0) {
            Sample mirror{metalAt(point), 1};
            Sample print = m_print.at(column, row);
            print.colour *= 0.9F;
            mirror = over(print, mirror);
            sample = over({mirror.colour * metal, metal}, sample);
        }
        const float relief = m_relief.at(point.r) * point.facing(reliefAzimuth);
        sample.colour *= 1 + 0.6F * std::min(relief, 0.0F);
        sample.colour += Rgb{1, 1, 1} * (0.22F * std::max(relief, 0.0F) * std::max(sample.alpha, 0.4F));
        sample.alpha = std::max(sample.alpha, 0.25F * std::abs(relief));
        return {sample.colour * inside, sample.alpha * inside};
    }

private:
    static constexpr float spectrumReach = 1.3F;

    static float reliefAt(float r) {
        float result = 0;
        for (const float edge : {0.142F, 0.20F, 0.262F, 0.28F, 0.305F, 0.324F})
            result += slope(r, edge, 0.0040F);
        return result + 0.5F * slope(r, metalFrom + 0.004F, 0.003F) + 0.45F * slope(r, metalTo, 0.004F) +
               0.8F * slope(r, 0.992F, 0.005F) + 0.9F * slope(r, 0.129F, 0.004F);
    }

    /// The clear hub and the clear rim.
    Sample plasticAt(const Point& point) const {
        const float facing = point.facing(reliefAzimuth);
        float alpha = 0.34F + 0.20F * bell(point.r, 0.28F, 0.008F) + 0.22F * bell(point.r, 0.322F, 0.006F);
        float light = 0.52F + 0.16F * facing;
        const auto glint = [&](float azimuth, float width) { return bell(point.across(azimuth), 0, width); };
        light += 0.75F * glint(keyAzimuth, 0.16F) + 0.40F * glint(fillAzimuth - 0.3F, 0.12F);
        alpha += 0.12F * glint(keyAzimuth, 0.16F);
        if (point.r > metalTo) {
            alpha = 0.34F + 0.30F * bell(point.r, 0.995F, 0.004F);
            light *= 0.9F;
        }
        return {m_tone * (light * alpha), alpha};
    }

    Rgb metalAt(const Point& point) const {
        const auto lobe = [&](float azimuth, float width) { return bell(point.across(azimuth), 0, width); };
        const float facing = point.facing(reliefAzimuth);
        float room = 0.415F + 0.09F * facing - 0.13F * lobe(keyAzimuth, 0.62F) +
                     0.20F * lobe(fillAzimuth - 0.30F, 0.16F) + 0.34F * lobe(keyAzimuth - 0.56F, 0.10F) +
                     0.22F * lobe(keyAzimuth + 0.60F, 0.13F) - 0.12F * lobe(keyAzimuth + pi / 2, 0.40F);
        const bool blank = m_disc.label.style == LabelStyle::None;
        if (blank) {
            const float satin = 0.575F + 0.10F * facing + 0.22F * lobe(keyAzimuth, 0.36F) +
                                0.10F * lobe(fillAzimuth + 0.2F, 0.22F);
            room = mix(room, satin, 0.72F);
        }
        const float data = smoothStep(dataFrom - 0.002F, dataFrom + 0.002F, point.r) *
                           smoothStep(dataTo + 0.002F, dataTo - 0.002F, point.r);
        room *= 1 + 0.035F * m_ripple.at(point.r) * data - 0.10F * (1 - data);
        // Brushed a little, as a pressing is, so that the wide lights are not plastic.
        room *= 1 + 0.03F * valueNoise(120 * point.u, point.r * 3, 120, m_disc.seed + 9) *
                        lobe(keyAzimuth - 0.56F, 0.3F);
        return m_tone * room + rainbowAt(point) * (m_disc.rainbow * data);
    }

    Rgb rainbowAt(const Point& point) const {
        Rgb sum;
        for (const Fan& fan : fans) {
            const float spacing = 2 * fan.spread / (lamps - 1);
            for (int i = 0; i < lamps; ++i) {
                const float t = 2 * static_cast<float>(i) / (lamps - 1) - 1;
                const float azimuth = fan.azimuth + fan.spread * t;
                const float k = fan.k0 * (1 + fan.k2 * t);
                const float weight = bell(point.across(azimuth), 0, fan.width) * (1 - 0.35F * t * t) *
                                     spacing / (fan.width * std::sqrt(pi));
                if (weight < 0.002F)
                    continue;
                // On the side of the lamp the second order would be no more than a lone spot of its violet.
                const float u = k * point.facing(azimuth) - fan.k1 * point.r;
                const auto& spectrum = u > 0 ? m_firstOrder : m_spectrum;
                const auto index = static_cast<std::size_t>(std::abs(u) / spectrumReach *
                                                            static_cast<float>(spectrum.size()));
                sum += spectrum[std::min(index, spectrum.size() - 1)] * (weight * fan.strength);
            }
        }
        return sum;
    }

    const Disc& m_disc;
    Print m_print;
    Rgb m_tone;
    RadialTable m_ripple;
    RadialTable m_relief;
    std::array<Rgb, 2048> m_spectrum; ///< by obliqueness, up to `spectrumReach`
    std::array<Rgb, 2048> m_firstOrder;
};

} // namespace

std::unique_ptr<DiscShader> makeCompactDisc(const Disc& disc) { return std::make_unique<CompactDisc>(disc); }

} // namespace tarnwick::painter
