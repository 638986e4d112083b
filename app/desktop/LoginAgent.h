#pragma once

#include "settings/LaunchAgentManager.h"

#include <memory>

namespace tarnwick {

/// This program's own login agent, where the user's agents lie.
class LoginAgent {
public:
    /// `log` and `queue` as for `LaunchAgentManager::Parts`.
    explicit LoginAgent(std::function<void(const QString&)> log, dispatch::Queue* queue = nullptr);

    LaunchAgentManager& manager() { return m_manager; }

private:
    const std::unique_ptr<launchctl::Launchctl> m_launchctl;
    LaunchAgentManager m_manager;
};

} // namespace tarnwick
