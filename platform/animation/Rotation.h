#pragma once

#include "platform/dispatch/Dispatcher.h"

namespace tarnwick::animation {

/// An even, endless turn clockwise that can be halted and resumed without a jump. Its angle is a function
/// of the time and of nothing else, so it may be asked for as often or as rarely as one likes.
class Rotation {
public:
    /// `period` is the time of one turn.
    explicit constexpr Rotation(dispatch::Duration period) : m_period(period) {}

    /// Turns on from the angle of this moment; starting what turns already changes nothing.
    void start(dispatch::Instant now);

    /// Stands still at the angle of this moment.
    void stop(dispatch::Instant now);

    bool isTurning() const { return m_turning; }

    /// Radians against the clock, so it falls while turning; more than −2π, at most 0.
    double angle(dispatch::Instant now) const;

private:
    /// How far into a turn, 0…1.
    double phase(dispatch::Instant now) const;

    dispatch::Duration m_period;
    double m_phase = 0; ///< at m_since
    dispatch::Instant m_since{0};
    bool m_turning = false;
};

} // namespace tarnwick::animation
