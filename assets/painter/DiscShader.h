#pragma once

#include "assets/painter/DiscTable.h"
#include "assets/painter/Geometry.h"
#include "assets/painter/Linear.h"

#include <QImage>

#include <memory>

namespace tarnwick::painter {

/// Gives the colour of every pixel of one disc.
class DiscShader {
public:
    DiscShader() = default;
    DiscShader(const DiscShader&) = delete;
    DiscShader& operator=(const DiscShader&) = delete;
    virtual ~DiscShader() = default;

    virtual Sample at(int column, int row) const = 0;
};

std::unique_ptr<DiscShader> makeShader(const Disc& disc);
std::unique_ptr<DiscShader> makeVinyl(const Disc& disc);
std::unique_ptr<DiscShader> makeCompactDisc(const Disc& disc);
std::unique_ptr<DiscShader> makeReel(const Disc& disc);

/// The finished picture of a disc.
QImage paintDisc(const Disc& disc);

/// The print of a disc, read as linear light.
class Print {
public:
    explicit Print(const QImage& art) : m_art(art) {}

    /// Colour multiplied by coverage, and coverage.
    Sample at(int column, int row) const;

private:
    QImage m_art;
};

/// The slope of a raised edge: light on one side, shade on the other.
inline float slope(float r, float centre, float width) {
    const float t = (r - centre) / width;
    return t * std::exp(-t * t);
}

/// `above` over `below`.
inline Sample over(const Sample& above, const Sample& below) {
    return {above.colour + below.colour * (1 - above.alpha), above.alpha + below.alpha * (1 - above.alpha)};
}

} // namespace tarnwick::painter
