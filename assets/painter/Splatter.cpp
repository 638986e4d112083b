#include "assets/painter/Patterns.h"

#include <vector>

namespace tarnwick::painter {

namespace {

constexpr int jets = 23;

/// The look of one kind of drop.
struct Kind {
    float share; ///< of all drops
    float reach; ///< exponent of the distance thrown: the smaller, the farther
    float sizeFrom;
    float sizeSpread;
    float sizePower;
    float lengthFrom;
    float lengthSpread;
    float outline; ///< how far from round
};
constexpr std::array kinds{
    Kind{0.16F, 1.25F, 0.45F, 0.75F, 1, 1.1F, 0.9F, 1}, // pools
    Kind{0.26F, 0.85F, 0.13F, 0.16F, 1, 3, 6, 0.35F},   // streaks
    Kind{0.58F, 0.62F, 0.05F, 0.34F, 3, 1, 1.1F, 0.7F}, // spray
};

/// Numbers in 0…1, one after the other.
class Draw {
public:
    explicit Draw(std::uint32_t seed) : m_seed(seed) {}
    float next() { return hash(m_index++, 11, m_seed); }

private:
    std::uint32_t m_seed;
    std::int32_t m_index = 0;
};

/// How much fluid of one colour lies at each pixel. Drops add up, so that neighbours flow together.
class Fluid {
public:
    Fluid(const Drops& drops, std::uint32_t seed)
        : m_field(static_cast<std::size_t>(side) * side), m_seed(seed) {
        Draw draw(seed);
        std::array<float, jets> directions{};
        for (std::size_t i = 0; i < jets; ++i) // to all sides
            directions[i] = turn * (static_cast<float>(i) + draw.next()) / jets;
        for (int i = 0; i < drops.count; ++i)
            add(drops, draw, directions);
        roughen();
    }

    /// Between pixels, linearly.
    float at(float x, float y) const {
        const float column = clamp(x * radiusInPixels + side / 2.0F - 0.5F, 0, side - 2);
        const float row = clamp(y * radiusInPixels + side / 2.0F - 0.5F, 0, side - 2);
        const auto cx = static_cast<std::size_t>(column);
        const auto cy = static_cast<std::size_t>(row);
        const float fx = column - static_cast<float>(cx);
        const float fy = row - static_cast<float>(cy);
        const float* p = &m_field[cy * side + cx];
        return mix(mix(p[0], p[1], fx), mix(p[side], p[side + 1], fx), fy);
    }

    /// How much of a pixel is covered: the border is as sharp as the picture allows however slowly the
    /// fluid thins out there.
    float coverageAt(const Point& point, float fluid) const {
        constexpr float border = 0.43F;
        if (fluid < 0.2F)
            return 0;
        const float dx = at(point.x + pixel, point.y) - at(point.x - pixel, point.y);
        const float dy = at(point.x, point.y + pixel) - at(point.x, point.y - pixel);
        const float slope = 0.5F * std::sqrt(dx * dx + dy * dy) + 1e-4F; // per pixel
        return clamp(0.5F + (fluid - border) / (1.2F * slope), 0, 1);
    }

private:
    void add(const Drops& drops, Draw& draw, const std::array<float, jets>& directions) {
        const float pick = draw.next();
        const Kind& kind = pick < kinds[0].share                    ? kinds[0]
                           : pick < kinds[0].share + kinds[1].share ? kinds[1]
                                                                    : kinds[2];
        const float r = 0.36F + 0.64F * std::pow(draw.next(), kind.reach);
        const float spread = draw.next() + draw.next() - 1;
        const float angle = directions[static_cast<std::size_t>(draw.next() * jets) % jets] + 0.16F * spread;
        const float size = drops.big * std::pow(1.22F - r, 1.2F) *
                           (kind.sizeFrom + kind.sizeSpread * std::pow(draw.next(), kind.sizePower));
        const float stretch = draw.next() * (kind.sizePower > 1 ? r : 1);
        const float length = size * (kind.lengthFrom + kind.lengthSpread * stretch);
        std::array<float, 3> phases{};
        for (float& phase : phases)
            phase = turn * draw.next();

        const float cx = r * std::cos(angle);
        const float cy = r * std::sin(angle);
        const float reach = 2.4F * length;
        const auto toPixel = [](float v) { return static_cast<int>(v * radiusInPixels + side / 2.0F); };
        for (int row = std::max(0, toPixel(cy - reach)); row <= std::min(side - 1, toPixel(cy + reach));
             ++row) {
            for (int column = std::max(0, toPixel(cx - reach));
                 column <= std::min(side - 1, toPixel(cx + reach)); ++column) {
                const Point point = Point::ofPixel(column, row);
                const float dx = point.x - cx;
                const float dy = point.y - cy;
                const float along = (dx * std::cos(angle) + dy * std::sin(angle)) / length;
                const float across = (dy * std::cos(angle) - dx * std::sin(angle)) / size;
                const float squared = along * along + across * across;
                if (squared > 6)
                    continue;
                const float phi = std::atan2(across, along);
                const float outline = 1 + kind.outline * (0.17F * std::cos(2 * phi + phases[0]) +
                                                          0.12F * std::cos(3 * phi + phases[1]) +
                                                          0.08F * std::cos(5 * phi + phases[2]));
                m_field[static_cast<std::size_t>(row) * side + static_cast<std::size_t>(column)] +=
                    std::exp(-1.1F * squared / (outline * outline));
            }
        }
    }

    /// Fluid that was thrown has no even border: large lobes, and small ones for who comes close.
    void roughen() {
        for (int row = 0; row < side; ++row) {
            for (int column = 0; column < side; ++column) {
                float& fluid =
                    m_field[static_cast<std::size_t>(row) * side + static_cast<std::size_t>(column)];
                if (fluid < 0.1F)
                    continue;
                const Point point = Point::ofPixel(column, row);
                const float lobes = fractal(60 * point.u, 16 * point.r, 60, 3, 0.5F, m_seed + 31);
                const float threads = fractal(150 * point.u, 22 * point.r, 150, 2, 0.5F, m_seed + 37);
                fluid *= 1 + 0.30F * lobes + 0.16F * threads;
            }
        }
    }

    std::vector<float> m_field;
    std::uint32_t m_seed;
};

class Splatter : public Material {
public:
    explicit Splatter(const Disc& disc) : m_base(makeMarble(disc)) {
        std::uint32_t seed = disc.seed * 97;
        for (const Drops& drops : disc.drops) {
            if (drops.count > 0)
                m_layers.push_back({linearOf(drops.colour), Fluid(drops, seed += 1000)});
        }
    }

    Rgb colourAt(const Point& point) const override {
        Rgb colour = m_base->colourAt(point);
        for (const Layer& layer : m_layers) {
            const float fluid = layer.fluid.at(point.x, point.y);
            if (fluid < 0.16F)
                continue;
            // Round a drop the base takes some of its colour, but no light one may glow on a darker base.
            const float darkens =
                clamp((0.02F + colour.luminance()) / (0.02F + layer.colour.luminance()), 0, 1);
            colour = mix(colour, layer.colour, 0.16F * darkens * smoothStep(0.16F, 0.40F, fluid));
            // Where it lies thin the ground shines through a little, so that a pool has depth.
            const float depth = smoothStep(0.43F, 1.0F, fluid);
            const Rgb body = mix(mix(colour, layer.colour, 0.96F) * 1.06F, layer.colour * 0.94F, depth);
            colour = mix(colour, body, layer.fluid.coverageAt(point, fluid));
        }
        return colour;
    }

private:
    struct Layer {
        Rgb colour;
        Fluid fluid;
    };

    std::unique_ptr<Material> m_base;
    std::vector<Layer> m_layers;
};

} // namespace

std::unique_ptr<Material> makeSplatter(const Disc& disc) { return std::make_unique<Splatter>(disc); }

} // namespace tarnwick::painter
