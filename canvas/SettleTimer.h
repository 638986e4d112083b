#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tarnwick {

/// Waits until something has not changed for a while: each `start` begins the wait anew.
class SettleTimer {
public:
    /// How long a size must stand before what depends on it is made anew.
    static constexpr std::chrono::milliseconds settleTime{150};

    /// `settled` is called on the main thread, and not after the timer has gone.
    explicit SettleTimer(std::function<void()> settled);

    void start();
    void stop();

private:
    std::function<void()> m_settled;
    std::shared_ptr<int> m_starts = std::make_shared<int>(0);
};

} // namespace tarnwick
