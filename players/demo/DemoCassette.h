#pragma once

#include <QByteArray>

namespace tarnwick::players {

/// A tape cassette as an encoded picture with transparent surroundings, 1400 x 900, the same bytes every
/// time.
QByteArray paintCassette();

} // namespace tarnwick::players
