#pragma once

#include <QByteArray>

namespace tarnwick::players {

/// The sleeves of the demo library.
enum class DemoCover {
    None,
    Dusk,       ///< hills before a low sun: photographic, warm to cold
    Sea,        ///< water under mist, pale to deep
    Shapes,     ///< flat geometry in four colours
    WhiteRoom,  ///< near white
    Night,      ///< near black
    Pier,       ///< greyscale photograph with a white middle
    Crossing,   ///< black and white at full contrast, one yellow
    CityLights, ///< lights out of focus on a wet night
    Typography, ///< saturated, nothing but type
    Stripes,    ///< warm stripes, rounded like an old poster
};

/// The sleeve as an encoded picture, 1600 x 1600, the same bytes every time; empty for `None`. Takes
/// up to half a second, so not on the main thread. Lettering needs a QGuiApplication.
QByteArray paintCover(DemoCover cover);

} // namespace tarnwick::players
