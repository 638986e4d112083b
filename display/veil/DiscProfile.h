#pragma once

#include "visuals/Colour.h"

#include <QImage>

#include <vector>

namespace tarnwick {

/// What a disc that turns can show at each distance from its centre: of every ring the pixels that are worst
/// for the text.
class DiscProfile {
public:
    DiscProfile() = default;

    /// `disc` is premultiplied, square, and stands for `diameter` points. `grounds` are opaque colours that
    /// may lie under it: where it is translucent, which pixel is the worst depends on them.
    DiscProfile(const QImage& disc, double diameter, const Colour& text, const std::vector<Colour>& grounds);

    bool isEmpty() const { return m_rings.empty(); }

    /// Where its outline is, in points from the centre.
    double radius() const { return m_radius; }

    /// Whether a block of 4 by 4 points may show some of the disc at `distance` points from its centre.
    bool reaches(double distance) const { return !isEmpty() && distance < m_radius + margin; }

    /// The worst colour that a block of 4 by 4 points at `distance` can have over `ground`, at any angle.
    Colour worst(double distance, const Colour& ground) const;

    /// The same over the whole disc.
    Colour worstOfAll(const Colour& ground) const;

private:
    static constexpr double margin = 3;

    /// Takes what is worse in the disc at half its size, which begins `shift` points inside the disc's
    /// corner.
    void gather(const QImage& small, double shift, const std::vector<Colour>& grounds,
                std::vector<std::vector<Colour>>& worsts);
    void worsen(Colour& worst, size_t ring, const Colour& ground) const;

    Colour m_text;
    double m_radius = 0;
    std::vector<std::vector<Colour>> m_rings; // premultiplied, with their alpha
};

} // namespace tarnwick
