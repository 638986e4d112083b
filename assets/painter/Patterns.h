#pragma once

#include "assets/painter/DiscTable.h"
#include "assets/painter/Geometry.h"
#include "assets/painter/Linear.h"

#include <memory>

namespace tarnwick::painter {

/// The colour of a record's material, before light.
class Material {
public:
    Material() = default;
    Material(const Material&) = delete;
    Material& operator=(const Material&) = delete;
    virtual ~Material() = default;

    /// Nothing in it may be finer than a pixel: one look gives the pixel.
    virtual Rgb colourAt(const Point& point) const = 0;
};

/// The material of a disc; its pattern must be one of vinyl.
std::unique_ptr<Material> makeMaterial(const Disc& disc);

/// Tones poured into each other.
std::unique_ptr<Material> makeMarble(const Disc& disc);

/// Drops thrown outward over a pour.
std::unique_ptr<Material> makeSplatter(const Disc& disc);

} // namespace tarnwick::painter
