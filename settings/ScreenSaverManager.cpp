#include "settings/ScreenSaverManager.h"

#include <utility>

namespace tarnwick {

/// Shared with the answer that is under way, which may come when the manager has gone.
struct ScreenSaverManager::State {
    explicit State(power::PowerManager* power_) : power(power_) {}

    power::PowerManager* const power;
    std::optional<power::PowerManager::Assertion> activity;
    bool isWanted = false;
    bool isAsking = false;
};

ScreenSaverManager::ScreenSaverManager(power::PowerManager* power)
    : m_state(std::make_shared<State>(power)) {}

ScreenSaverManager::~ScreenSaverManager() { allowSleep(); }

void ScreenSaverManager::preventSleep() {
    m_state->isWanted = true;
    if (!m_state->activity && !m_state->isAsking && m_state->power)
        ask();
}

void ScreenSaverManager::ask() {
    m_state->isAsking = true;
    m_state->power->preventUserIdleDisplaySleep(QStringLiteral("TarnwickView preventing screen sleep"),
                                                [state = m_state](auto assertion) {
                                                    state->isAsking = false;
                                                    if (assertion && state->isWanted)
                                                        state->activity = assertion;
                                                    else if (assertion)
                                                        state->power->release(*assertion);
                                                });
}

void ScreenSaverManager::allowSleep() {
    m_state->isWanted = false;
    if (const auto held = std::exchange(m_state->activity, std::nullopt))
        m_state->power->release(*held);
}

std::optional<power::PowerManager::Assertion> ScreenSaverManager::activity() const {
    return m_state->activity;
}

} // namespace tarnwick
