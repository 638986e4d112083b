#include "platform/animation/Rotation.h"

#include <cmath>
#include <numbers>

namespace tarnwick::animation {

void Rotation::start(dispatch::Instant now) {
    if (m_turning)
        return;
    m_since = now;
    m_turning = true;
}

void Rotation::stop(dispatch::Instant now) {
    m_phase = phase(now);
    m_turning = false;
}

double Rotation::angle(dispatch::Instant now) const { return -2 * std::numbers::pi * phase(now); }

double Rotation::phase(dispatch::Instant now) const {
    if (!m_turning)
        return m_phase;
    // The remainder is taken in whole nanoseconds, so that weeks of turning cost no precision.
    const auto within = (now - m_since) % m_period;
    const double phase =
        m_phase + static_cast<double>(within.count()) / static_cast<double>(m_period.count());
    return phase - std::floor(phase);
}

} // namespace tarnwick::animation
