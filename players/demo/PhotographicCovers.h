#pragma once

#include <QImage>

namespace tarnwick::players {

// Sleeves that look photographed, each `coverSide` wide and high: light and noise, worked out for every
// pixel.

/// Hills before a low sun, warm to cold.
QImage paintDusk();

/// Water under mist, pale to deep.
QImage paintSea();

/// Daylight on a wall, near white.
QImage paintWhiteRoom();

/// Stars and a thin arc, near black.
QImage paintNight();

/// A long exposure of two rows of posts, in grey with a white middle.
QImage paintPier();

/// Lights out of focus on a wet night.
QImage paintCityLights();

} // namespace tarnwick::players
