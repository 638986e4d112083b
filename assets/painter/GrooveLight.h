#pragma once

#include "assets/painter/DiscTable.h"
#include "assets/painter/Geometry.h"
#include "assets/painter/RadialTable.h"

namespace tarnwick::painter {

/// What the light does at one point of a grooved disc.
struct Lit {
    float broad;   ///< the wide part of the bright sectors
    float core;    ///< their narrow part
    float streaks; ///< lines that swell and fade along the turn
    float groove;  ///< the groove's own strength
    float rough;   ///< 1 where there are grooves, 0 on smooth vinyl
    float grow;    ///< how much the sectors gain towards the edge
    float sheen;   ///< light on grooves
    float gloss;   ///< light on smooth vinyl
    float wave;    ///< unevenness of a thin sheet, 0 on any other disc
};

/// Light on a grooved disc: two opposite bright sectors over hundreds of fine lines. The lines are
/// noise over the radius and not a period, so that no size on screen turns them into patterns.
class GrooveLight {
public:
    explicit GrooveLight(const Disc& disc);

    Lit at(const Point& point) const;

    /// 1 on a band between tracks.
    float band(float r) const { return m_band.at(r); }
    /// 1 on the two lines beside each band.
    float bandLines(float r) const { return m_bandLines.at(r); }
    /// 1 where there is neither groove nor band: the wax, the lead-in, under the label.
    float smoothZone(float r) const { return m_smooth.at(r); }

private:
    float wave(const Point& point) const;

    const Disc& m_disc;
    RadialTable m_groove;
    RadialTable m_jitter;
    RadialTable m_loud;
    RadialTable m_grow;
    RadialTable m_rough;
    RadialTable m_band;
    RadialTable m_bandLines;
    RadialTable m_smooth;
};

} // namespace tarnwick::painter
