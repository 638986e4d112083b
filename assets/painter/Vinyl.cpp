#include "assets/painter/DiscShader.h"
#include "assets/painter/GrooveLight.h"
#include "assets/painter/LabelArt.h"
#include "assets/painter/Patterns.h"

#include <unordered_set>

namespace tarnwick::painter {

namespace {

/// What the thickness of a clear disc does with light at one radius.
struct Refraction {
    float r;
    float width;
    float light;
    float alpha;
};
constexpr std::array refractions{
    Refraction{0.992F, 0.004F, 0.30F, 0.42F},  Refraction{0.979F, 0.0035F, -0.75F, 0.34F},
    Refraction{0.402F, 0.0035F, 0.10F, 0.14F}, Refraction{0.337F, 0.004F, -0.5F, 0.30F},
    Refraction{0.9975F, 0.002F, -0.8F, 0.40F}, Refraction{0.030F, 0.004F, 0.2F, 0.3F},
};

constexpr float clearBelow = 0.5F; // of alpha: such vinyl is seen through

float reliefAt(const Disc& disc, float r) {
    const Zones& zones = disc.zones;
    float result = slope(r, 0.9875F, 0.0075F) + 0.3F * slope(r, zones.wax - 0.004F, 0.004F) +
                   0.45F * slope(r, zones.label + 0.010F, 0.006F);
    for (const float band : bandRadii(disc.bands))
        result += 0.35F * (slope(r, band - 0.0052F, 0.0022F) + slope(r, band + 0.0052F, 0.0022F));
    return result;
}

float labelReliefAt(const Zones& zones, float r) {
    constexpr float width = 0.0045F;
    return slope(r, 0.80F * zones.label, width) + slope(r, 0.985F * zones.label, width) +
           0.8F * slope(r, 0.43F * zones.label, width) + slope(r, zones.hole + 0.03F, width);
}

class Vinyl : public DiscShader {
public:
    explicit Vinyl(const Disc& disc)
        : m_disc(disc), m_material(makeMaterial(disc)), m_light(disc), m_print(labelArt(disc)),
          m_tint(linearOf(disc.surface.tint)), m_relief(0.4F, [&](float r) { return reliefAt(disc, r); }),
          m_labelRelief(0.4F, [&](float r) { return labelReliefAt(disc.zones, r); }) {
        for (std::int32_t i = 0; i < disc.surface.dust; ++i) {
            const float r = std::sqrt(hash(i, 1, disc.seed * 7));
            const float angle = turn * hash(i, 2, disc.seed * 7);
            const auto place = [](float v) { return static_cast<int>(v * radiusInPixels + side / 2.0F); };
            m_dust.insert(place(r * std::sin(angle)) * side + place(r * std::cos(angle)));
        }
    }

    Sample at(int column, int row) const override {
        const Point point = Point::ofPixel(column, row);
        const float outside = coverage(point.r - 1) * coverage(m_disc.zones.hole - point.r);
        if (outside <= 0)
            return {};
        const Lit lit = m_light.at(point);
        Sample sample = vinylAt(point, lit, column, row);
        if (point.r < m_disc.zones.label + 0.05F)
            sample = withLabel(sample, point, lit, column, row);
        const float wall = coverage(point.r - m_disc.zones.hole - 0.0045F);
        const float facing = point.facing(reliefAzimuth);
        const Rgb shade = linearOf(0x1a1a1c) * clamp(0.30F - 0.55F * facing, 0, 1);
        sample.colour = mix(sample.colour, shade * sample.alpha, wall);
        const float hair = isClear() ? 0.70F : 0.45F;
        sample.colour *= 1 - hair * smoothStep(0.9945F, 0.9965F, point.r);
        return {sample.colour * outside, sample.alpha * outside};
    }

private:
    bool isClear() const { return m_disc.surface.alpha < clearBelow; }
    bool isFlexi() const { return m_disc.zones.wax == flexi.wax; }

    Sample vinylAt(const Point& point, const Lit& lit, int column, int row) const {
        const Surface& surface = m_disc.surface;
        const float facing = point.facing(reliefAzimuth);
        const Rgb albedo = m_material->colourAt(point);
        const float highest = std::max(albedo.highest(), 1e-4F);

        float body =
            surface.k * (0.84F + 0.07F * point.r * facing) +
            surface.gain * lit.rough * lit.grow * (lit.broad * (1 + 0.3F * lit.streaks) + 0.35F * lit.core);
        body *= 1 + lit.rough * (0.13F * lit.groove + 0.05F * lit.streaks);
        body *= 1 - 0.24F * m_light.band(point.r) - 0.06F * m_light.smoothZone(point.r);
        body += 0.05F * m_light.bandLines(point.r);
        body *= 1 + 0.5F * lit.wave;

        // Shade is deeper in colour, not only darker.
        const float depth = 0.22F * clamp(1 - body, 0, 0.6F);
        const auto deepened = [&](float v) {
            return v * body * std::pow(std::max(v / highest, 1e-3F), depth);
        };
        Rgb colour{deepened(albedo.r), deepened(albedo.g), deepened(albedo.b)};
        const float rim = smoothStep(0.90F, 1, point.r);
        if (surface.rim > 0)
            colour *= 1 + 0.35F * rim;

        const float relief = m_relief.at(point.r) * facing;
        if (relief < 0)
            colour *= 1 + 0.42F * relief;
        const float light = lightAt(point, lit, relief, column, row);
        const Rgb own = albedo * (1 / highest);
        colour += mix(m_tint, own, surface.hued * clamp(9 * highest, 0, 1)) * light;
        return withAlpha(colour, light, point, lit, highest);
    }

    float lightAt(const Point& point, const Lit& lit, float relief, int column, int row) const {
        const Surface& surface = m_disc.surface;
        const float facing = point.facing(reliefAzimuth);
        float light = surface.shine * (lit.sheen + lit.gloss) + surface.emb * std::max(relief, 0.0F);
        light += bell(point.r, 0.9945F, 0.0022F) * 0.05F * (0.6F + 0.4F * facing);
        const float spirals = spiral(point, m_disc.zones.label + 0.018F, m_disc.zones.wax - 0.004F) +
                              spiral(point, m_disc.zones.end + 0.002F, 0.981F);
        light += 0.35F * surface.emb * spirals * (0.6F + 0.4F * facing);
        if (m_dust.contains(row * side + column))
            light += 0.05F;
        if (surface.flake > 0 && hash(column, row, m_disc.seed + 5) > 0.992F)
            light += surface.flake * (0.3F + lit.broad);
        return light;
    }

    /// A line of two turns from one radius to another.
    static float spiral(const Point& point, float from, float to) {
        const float step = (to - from) / 2;
        if (step <= 0 || point.r < from - 0.01F || point.r > to + 0.01F)
            return 0;
        float result = 0;
        for (int i = 0; i < 2; ++i)
            result += bell(point.r, from + step * (point.u + static_cast<float>(i)), 0.0011F);
        return result;
    }

    Sample withAlpha(Rgb colour, float light, const Point& point, const Lit& lit, float highest) const {
        const Surface& surface = m_disc.surface;
        float alpha = surface.alpha;
        if (isClear()) {
            alpha *= 1 + 0.27F * lit.rough * lit.groove +
                     0.45F * (m_light.band(point.r) + m_light.bandLines(point.r));
            colour *= alpha;
            // What light adds it adds whole, however clear the vinyl.
            colour += m_tint * (light * (1 - alpha));
            for (const Refraction& refraction : refractions) {
                const float shape = bell(point.r, refraction.r, refraction.width);
                const float facing =
                    0.65F + (refraction.light > 0 ? 0.35F : -0.35F) * point.facing(reliefAzimuth);
                alpha += refraction.alpha * shape * facing;
                colour += m_tint * (std::max(refraction.light, 0.0F) * shape * facing);
            }
            alpha = clamp(std::max(alpha, 1.15F * light), 0, 1);
            return {colour, alpha};
        }
        if (isFlexi()) {
            alpha *= (1 - 0.16F * smoothStep(0.502F, 0.498F, point.r)) *
                     (1 - 0.14F * smoothStep(0.964F, 0.966F, point.r)) * (1 + 0.1F * lit.wave);
        } else {
            alpha = 1 - surface.rim * smoothStep(0.90F, 1, point.r) * (1 - 0.35F * highest);
        }
        alpha = clamp(std::max(alpha, 1.15F * light), 0, 1);
        return {colour * alpha, alpha};
    }

    Sample withLabel(const Sample& below, const Point& point, const Lit& lit, int column, int row) const {
        const Zones& zones = m_disc.zones;
        const float facing = point.facing(reliefAzimuth);
        Sample print = m_print.at(column, row);
        Sample result = below;
        if (!m_disc.label.inkOnly) {
            const float shadow = 0.35F * std::exp(-std::max(point.r - zones.label, 0.0F) / 0.006F);
            result.colour *= 1 - shadow;
        }
        if (print.alpha <= 0)
            return result;
        const float fibre = valueNoise(point.x * 210, point.y * 90, 1 << 20, m_disc.seed + 61) +
                            0.6F * valueNoise(point.x * 70, point.y * 160, 1 << 20, m_disc.seed + 62);
        float shade = 0.86F + 0.085F * facing * point.r / zones.label + 0.035F * lit.broad +
                      0.022F * (hash(column, row, m_disc.seed + 63) - 0.5F) * 2 + 0.016F * fibre;
        if (!m_disc.label.inkOnly) {
            shade *= 1 + 0.32F * m_labelRelief.at(point.r) * facing;
            shade *= mix(0.82F, 1, smoothStep(0, 0.012F, zones.label - point.r));
            shade *= mix(0.55F, 1, smoothStep(0, 0.012F, point.r - zones.hole));
        }
        print.colour *= shade;
        return over(print, result);
    }

    const Disc& m_disc;
    std::unique_ptr<Material> m_material;
    GrooveLight m_light;
    Print m_print;
    Rgb m_tint;
    RadialTable m_relief;
    RadialTable m_labelRelief;
    std::unordered_set<int> m_dust;
};

} // namespace

std::unique_ptr<DiscShader> makeVinyl(const Disc& disc) { return std::make_unique<Vinyl>(disc); }

} // namespace tarnwick::painter
