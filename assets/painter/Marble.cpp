#include "assets/painter/Patterns.h"

#include <vector>

namespace tarnwick::painter {

namespace {

// The ring over which a pour is balanced and ranked.
constexpr float ringFrom = 0.36F;
constexpr float ringTo = 0.97F;

class Marble : public Material {
public:
    explicit Marble(const Disc& disc) : m_seed((disc.seed + 100 * disc.pour) * 71), m_shares(disc.shares) {
        for (std::size_t i = 0; i < m_tones.size(); ++i)
            m_tones[i] = linearOf(disc.tones[i]);
        balance();
        rank();
    }

    Rgb colourAt(const Point& point) const override {
        const Flow flow = flowAt(point);
        const float share = shareOf(balanced(flow.m, point));
        const float softness = 0.13F * (1 + 0.72F * clamp(2.4F * flow.p, -1, 1));
        Rgb colour =
            mix(m_tones[0], m_tones[1], smoothStep(m_shares[0] - softness, m_shares[0] + softness, share));
        colour = mix(colour, m_tones[2], smoothStep(m_shares[1] - softness, m_shares[1] + softness, share));
        const float vein = 0.60F * bell(flow.q2, -0.05F, 0.04F) * smoothStep(-0.15F, 0.25F, flow.p) *
                           smoothStep(0.30F, 0.55F, share);
        colour = mix(colour, m_tones[3], vein);
        return colour * (1 + 0.24F * flow.p + 0.12F * flow.q2);
    }

private:
    /// The warped noise and the two fields it was warped by.
    struct Flow {
        float m;
        float p;
        float q2;
    };

    Flow flowAt(const Point& point) const {
        constexpr int cells = 3;
        const float u = point.u + 0.60F * (point.r - 0.65F) +
                        0.04F * gradientNoise(5 * point.u, 3 * point.r, 5, m_seed + 900);
        const float a = cells * u;
        const float b = 3 * point.r;
        const auto noise = [&](float x, float y, std::uint32_t offset, float gain) {
            return fractal(x, y, cells, 3, gain, m_seed + offset);
        };
        const float q = noise(a, b, 0, 0.45F);
        const float p = noise(a + 0.37F, b + 5.2F, 400, 0.45F);
        const float a2 = a + 1.25F * q;
        const float b2 = b + 1.25F * p;
        const float q2 = noise(a2, b2 + 9.1F, 800, 0.45F);
        const float m = noise(a2 + 1.125F * q2, b2 + 0.875F * q2, 1200, 0.42F);
        return {m, p, q2};
    }

    float balanced(float m, const Point& point) const {
        return m - 2 * (m_heavyX * point.cosine + m_heavyY * point.sine);
    }

    template <typename Visit>
    void overRing(Visit visit) const {
        constexpr int rings = 96;
        constexpr int steps = 512;
        for (int i = 0; i < rings; ++i) {
            // Even in area, not in radius.
            const float t = (static_cast<float>(i) + 0.5F) / rings;
            const float r = std::sqrt(mix(ringFrom * ringFrom, ringTo * ringTo, t));
            for (int j = 0; j < steps; ++j) {
                const float angle = turn * static_cast<float>(j) / steps;
                visit(Point(r * std::cos(angle), r * std::sin(angle)));
            }
        }
    }

    /// Finds the heavy side, without which the disc would not flash once a turn.
    void balance() {
        double x = 0;
        double y = 0;
        int count = 0;
        overRing([&](const Point& point) {
            const float m = flowAt(point).m;
            x += static_cast<double>(m * point.cosine);
            y += static_cast<double>(m * point.sine);
            ++count;
        });
        m_heavyX = static_cast<float>(x / count);
        m_heavyY = static_cast<float>(y / count);
    }

    /// Sorts all values, so that each tone gets the share it was promised whatever the noise is like.
    void rank() {
        overRing([&](const Point& point) { m_ranked.push_back(balanced(flowAt(point).m, point)); });
        std::sort(m_ranked.begin(), m_ranked.end());
        std::vector<float> knots;
        constexpr std::size_t count = 513;
        for (std::size_t i = 0; i < count; ++i)
            knots.push_back(m_ranked[i * (m_ranked.size() - 1) / (count - 1)]);
        m_ranked = std::move(knots);
    }

    float shareOf(float m) const {
        const auto above = std::upper_bound(m_ranked.begin(), m_ranked.end(), m);
        if (above == m_ranked.begin())
            return 0;
        if (above == m_ranked.end())
            return 1;
        const float low = *(above - 1);
        const float t = (m - low) / std::max(*above - low, 1e-6F);
        return (static_cast<float>(above - 1 - m_ranked.begin()) + t) /
               static_cast<float>(m_ranked.size() - 1);
    }

    std::uint32_t m_seed;
    std::array<float, 2> m_shares;
    std::array<Rgb, 4> m_tones;
    float m_heavyX = 0;
    float m_heavyY = 0;
    std::vector<float> m_ranked;
};

} // namespace

std::unique_ptr<Material> makeMarble(const Disc& disc) { return std::make_unique<Marble>(disc); }

} // namespace tarnwick::painter
