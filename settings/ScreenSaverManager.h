#pragma once

#include "platform/power/PowerManager.h"

#include <memory>

namespace tarnwick {

/// Holds at most one assertion that keeps the display awake. Main thread only.
///
/// The power manager answers later; what was last asked for is what holds in the end. An assertion that
/// is held is kept when it is asked for again, and a request that fails leaves none, in silence.
class ScreenSaverManager {
public:
    /// `power` must outlive this object; null means that nothing is ever held.
    explicit ScreenSaverManager(power::PowerManager* power);
    ScreenSaverManager(const ScreenSaverManager&) = delete;
    ScreenSaverManager& operator=(const ScreenSaverManager&) = delete;

    /// Releases what is held.
    ~ScreenSaverManager();

    void preventSleep();
    void allowSleep();

    /// The assertion that is held; none when none is.
    std::optional<power::PowerManager::Assertion> activity() const;

private:
    struct State;

    void ask();

    const std::shared_ptr<State> m_state;
};

} // namespace tarnwick
