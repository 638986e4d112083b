#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QObject>

namespace tarnwick::animation {

/// The clock that views move by. Main thread only.
class Clock : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Never goes backwards.
    virtual dispatch::Instant now() const = 0;

Q_SIGNALS:
    /// The clock was moved by hand: whatever moves shall show where it is now. A clock that runs by
    /// itself never says so; there the views look at it as often as they draw.
    void moved();
};

/// The clock of a dispatcher.
class SystemClock : public Clock {
    Q_OBJECT

public:
    /// `dispatcher` must outlive the clock.
    explicit SystemClock(const dispatch::Dispatcher& dispatcher, QObject* parent = nullptr)
        : Clock(parent), m_dispatcher(dispatcher) {}

    dispatch::Instant now() const override { return m_dispatcher.now(); }

private:
    const dispatch::Dispatcher& m_dispatcher;
};

/// A clock that stands still until it is moved.
class ManualClock : public Clock {
    Q_OBJECT

public:
    using Clock::Clock;

    dispatch::Instant now() const override { return m_now; }

    void advance(dispatch::Duration duration) {
        m_now += duration;
        Q_EMIT moved();
    }

private:
    dispatch::Instant m_now{0};
};

} // namespace tarnwick::animation
