#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace tarnwick::power {

/// Holds off the display's sleep. Main thread only.
class PowerManager {
public:
    using Assertion = std::uint32_t;
    using CreatedHandler = std::function<void(std::optional<Assertion>)>;

    PowerManager() = default;
    PowerManager(const PowerManager&) = delete;
    PowerManager& operator=(const PowerManager&) = delete;
    virtual ~PowerManager() = default;

    /// Asks that an idle user's display stays awake, giving `reason` to whoever looks. Returns at once;
    /// `created` is called later on the main queue with the assertion, or with none when nobody here could
    /// ever grant one, and not any more once this object has gone. The assertion holds whenever there is
    /// somebody who grants it, whoever comes and goes; it ends when it is released, and at the latest with
    /// the process.
    virtual void preventUserIdleDisplaySleep(const QString& reason, CreatedHandler created) = 0;

    /// Ends an assertion. Returns at once.
    virtual void release(Assertion assertion) = 0;
};

} // namespace tarnwick::power
