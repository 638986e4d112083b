#pragma once

#include <functional>

namespace tarnwick {

/// Draws a number uniformly from 0…count−1; `count` is at least 1.
using RandomIndex = std::function<int(int count)>;

/// Draws from the system's random source.
RandomIndex systemRandomIndex();

/// Draws the same sequence for the same seed.
RandomIndex seededRandomIndex(unsigned seed);

} // namespace tarnwick
