#include "assets/painter/DiscShader.h"
#include "assets/painter/GrooveLight.h"
#include "assets/painter/LabelArt.h"

namespace tarnwick::painter {

namespace {

constexpr float hubRadius = 0.30F;
constexpr float corner = 0.045F;
constexpr int spokes = 3;
constexpr float firstSpoke = -28 * pi / 180;
constexpr float notchDepth = 0.04F;
constexpr float notchHalfWidth = 0.0135F;
constexpr float screwRadius = 0.205F;
constexpr float screwSize = 0.022F;

/// The distance from the border of a shape that is bounded by several borders, with round corners;
/// negative inside.
float rounded(std::initializer_list<float> borders) {
    float squares = 0;
    float highest = -1;
    for (const float border : borders) {
        const float v = border + corner;
        highest = std::max(highest, v);
        if (v > 0)
            squares += v * v;
    }
    return std::sqrt(squares) + std::min(highest, 0.0F) - corner;
}

class Reel : public DiscShader {
public:
    explicit Reel(const Disc& disc)
        : m_disc(disc), m_light(disc), m_print(labelArt(disc)), m_tape(linearOf(disc.tones[0])),
          m_metal(linearOf(disc.tones[1])),
          m_hub(linearOf(disc.label.style == LabelStyle::TapeHub ? 0xeceae4 : disc.label.paper)),
          m_windings(0.5F, [&](float r) { return windingsAt(r); }) {}

    Sample at(int column, int row) const override {
        const Point point = Point::ofPixel(column, row);
        const float inside = coverage(point.r - 1) * coverage(-holeDistance(point));
        if (inside <= 0)
            return {};
        const Lit lit = m_light.at(point);
        const float d = windowDistance(point.x, point.y);
        Sample sample = tapeAt(point, lit, d);
        sample = over(flangeAt(point, lit, d, sample.alpha), sample);
        if (point.r < hubRadius + 0.03F)
            sample = withHub(sample, point, lit, column, row);
        return {sample.colour * inside, sample.alpha * inside};
    }

private:
    /// Negative in the windows of the flange.
    float windowDistance(float x, float y) const {
        const float r = std::sqrt(x * x + y * y);
        constexpr float sector = turn / spokes;
        float angle = std::atan2(y, x) - firstSpoke;
        angle -= sector * std::floor(angle / sector); // from the spoke before
        const float fromFirst = r * std::sin(std::min(angle, pi / 2));
        const float fromSecond = r * std::sin(std::min(sector - angle, pi / 2));
        const ReelLook& look = m_disc.reel;
        return rounded({look.windowFrom - r, r - look.windowTo, look.halfSpoke - fromFirst,
                        look.halfSpoke - fromSecond});
    }

    /// Negative in the hole and its notches.
    float holeDistance(const Point& point) const {
        float d = point.r - m_disc.zones.hole;
        for (int i = 0; i < spokes; ++i) {
            const float azimuth = firstSpoke + turn * (static_cast<float>(i) + 0.5F) / spokes;
            const float along = point.r * point.facing(azimuth);
            if (along > 0)
                d = std::min(d, std::max(along - m_disc.zones.hole - notchDepth,
                                         std::abs(point.r * point.across(azimuth)) - notchHalfWidth));
        }
        return d;
    }

    /// How evenly the tape was wound: steps where it was stopped, and single turns that stand out.
    /// No two reels were wound alike.
    float windingsAt(float r) const {
        const std::uint32_t seed = m_disc.seed * 211;
        float result = 0;
        for (std::int32_t i = 0; i < 7; ++i) {
            const float place = mix(0.36F, m_disc.reel.wound, hash(i, 1, seed));
            const float height = 0.16F * (hash(i, 2, seed) - 0.45F);
            result += height * smoothStep(place - 0.002F, place + 0.002F, r);
        }
        for (std::int32_t i = 0; i < 16; ++i) {
            const float place = mix(0.34F, m_disc.reel.wound, hash(i, 3, seed));
            result += (hash(i, 4, seed) < 0.3F ? 0.34F : -0.22F) *
                      bell(r, place, 0.0012F + 0.0025F * hash(i, 5, seed));
        }
        return result;
    }

    Sample tapeAt(const Point& point, const Lit& lit, float d) const {
        const float wound = m_disc.reel.wound;
        const float pack = coverage(point.r - wound);
        // The pack is not quite even along the turn either.
        const float slack = fractal(5 * point.u, 7 * point.r, 5, 3, 0.5F, m_disc.seed * 13);
        float body =
            0.80F + 0.15F * lit.groove + 0.06F * lit.streaks + m_windings.at(point.r) + 0.16F * slack;
        Rgb colour = m_tape * std::max(body, 0.2F);
        const float sheen = 0.17F *
                            (lit.broad * (1 + 0.6F * lit.streaks + 0.4F * lit.groove) + 0.8F * lit.core) *
                            (0.6F + 0.4F * lit.grow) * (1 + m_windings.at(point.r));
        colour += Rgb{1, 0.86F, 0.74F} * sheen;
        colour += Rgb{1, 0.9F, 0.8F} * (0.10F * bell(point.r, wound - 0.003F, 0.003F) *
                                        (0.6F + 0.4F * point.facing(reliefAzimuth)));
        // The flange casts its shadow into the windows.
        constexpr float offset = 0.020F;
        const float shadow = windowDistance(point.x + offset * std::cos(reliefAzimuth),
                                            point.y + offset * std::sin(reliefAzimuth));
        const float open = m_disc.reel.clearFlange ? 0.80F : 0.42F;
        colour *= open + (1 - open) * smoothStep(0.020F, -0.022F, shadow);
        Sample tape{colour * pack, pack};
        if (m_disc.reel.clearFlange || d > 0.01F)
            return tape;
        // Beyond the tape one looks at the inside of the far flange.
        const Rgb far =
            m_metal * (0.10F + 0.10F * lit.broad) * (0.5F + 0.5F * smoothStep(wound, wound + 0.03F, point.r));
        return over(tape, {far, 1});
    }

    Sample flangeAt(const Point& point, const Lit& lit, float d, float below) const {
        const float solid = clamp(0.5F + d / pixel, 0, 1);
        const float facing = point.facing(reliefAzimuth);
        const float bevel = bevelAt(point, d);
        const float rim = slope(point.r, 0.9875F, 0.0075F) * facing;
        if (m_disc.reel.clearFlange) {
            float alpha = solid * mix(0.20F, 0.10F, below) + 0.30F * bell(point.r, 0.985F, 0.012F);
            float light = (0.42F + 0.10F * facing + 0.40F * lit.broad) * alpha + solid * 0.10F * lit.core;
            const float glow = 0.55F * std::max(bevel, 0.0F) + 0.45F * std::max(rim, 0.0F);
            alpha += 0.40F * std::abs(bevel) + 0.35F * std::abs(rim);
            light += glow + 0.10F * bell(d, 0, 0.004F);
            return {Rgb{0.95F, 0.98F, 1.0F} * std::min(light, 0.95F), clamp(std::max(alpha, light), 0, 1)};
        }
        float body = 0.34F + 0.10F * point.r * facing + 0.50F * lit.broad + 0.34F * lit.core;
        body *= 1 + 0.06F * lit.groove + 0.085F * lit.streaks;
        body *= 1 + 0.55F * std::min(bevel + rim, 0.0F);
        Rgb colour = m_metal * body;
        // Bare metal throws lamps back white; painted metal does so in part.
        colour += mix(m_metal, {1, 1, 1}, 0.55F) * (0.10F * lit.core);
        colour +=
            mix(m_metal, {1, 1, 1}, 0.5F) * (0.34F * std::max(bevel, 0.0F) + 0.26F * std::max(rim, 0.0F));
        return {colour * solid, solid};
    }

    /// Positive where the edge of a window faces the light.
    float bevelAt(const Point& point, float d) const {
        constexpr float width = 0.005F;
        const float shape = bell(d, 0.002F, width);
        if (shape < 0.02F)
            return 0;
        constexpr float step = 0.002F;
        const float dx = windowDistance(point.x + step, point.y) - windowDistance(point.x - step, point.y);
        const float dy = windowDistance(point.x, point.y + step) - windowDistance(point.x, point.y - step);
        return -(dx * std::cos(reliefAzimuth) + dy * std::sin(reliefAzimuth)) / (2 * step) * shape;
    }

    Sample withHub(const Sample& below, const Point& point, const Lit& lit, int column, int row) const {
        const float facing = point.facing(reliefAzimuth);
        Sample result = below;
        result.colour *= 1 - 0.40F * std::exp(-std::max(point.r - hubRadius, 0.0F) / 0.010F);
        const float cover = coverage(point.r - hubRadius);
        if (cover <= 0)
            return result;
        float body = 0.74F + 0.10F * facing * point.r / hubRadius + 0.20F * lit.broad;
        body *= 1 + 0.02F * lit.groove;
        Rgb colour = m_hub * body;
        float relief = slope(point.r, hubRadius - 0.008F, 0.008F) - 0.7F * slope(point.r, 0.125F, 0.006F) +
                       0.7F * slope(point.r, 0.135F, 0.006F);
        relief *= facing;
        Sample print = m_print.at(column, row);
        if (m_disc.label.style == LabelStyle::TapeHub && point.r < 0.16F) {
            print = {};
            relief += 0.8F * slope(point.r, 0.152F, 0.006F) * facing;
        }
        print.colour *= 0.86F + 0.07F * facing * point.r / hubRadius;
        colour = over(print, {colour, 1}).colour;
        colour = withScrews(colour, point);
        colour *= 1 + 0.5F * std::min(relief, 0.0F);
        colour += Rgb{1, 1, 1} * (0.25F * std::max(relief, 0.0F));
        colour *= mix(0.45F, 1, smoothStep(0, 0.010F, holeDistance(point)));
        return over({colour * cover, cover}, result);
    }

    Rgb withScrews(Rgb colour, const Point& point) const {
        for (int i = 0; i < m_disc.reel.screws; ++i) {
            const float azimuth =
                firstSpoke + turn * static_cast<float>(i) / static_cast<float>(m_disc.reel.screws);
            const float dx = point.x - screwRadius * std::cos(azimuth);
            const float dy = point.y - screwRadius * std::sin(azimuth);
            const float distance = std::sqrt(dx * dx + dy * dy);
            if (distance > 2 * screwSize)
                continue;
            const float facing =
                (dx * std::cos(reliefAzimuth) + dy * std::sin(reliefAzimuth)) / std::max(distance, 1e-4F);
            const float slotAngle = turn * hash(i, 9, m_disc.seed);
            const float slot = std::abs(dx * std::sin(slotAngle) - dy * std::cos(slotAngle));
            Rgb head = m_hub * (0.62F + 0.16F * facing * distance / screwSize);
            head *= 1 - 0.75F * coverage(slot - 0.0032F);
            const float sunk = bell(distance, screwSize, 0.0035F);
            colour = mix(colour, head, coverage(distance - screwSize));
            colour *= 1 - sunk * (0.45F + 0.35F * facing);
        }
        return colour;
    }

    const Disc& m_disc;
    GrooveLight m_light;
    Print m_print;
    Rgb m_tape;
    Rgb m_metal;
    Rgb m_hub;
    RadialTable m_windings;
};

} // namespace

std::unique_ptr<DiscShader> makeReel(const Disc& disc) { return std::make_unique<Reel>(disc); }

} // namespace tarnwick::painter
