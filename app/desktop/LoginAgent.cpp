#include "app/desktop/LoginAgent.h"

#include "app/desktop/Identity.h"

#include <QCoreApplication>

namespace tarnwick {

LoginAgent::LoginAgent(std::function<void(const QString&)> log, dispatch::Queue* queue)
    : m_launchctl(launchctl::makeLaunchctl()), m_manager({.folder = LaunchAgentManager::standardFolder(),
                                                          .identifier = bundleIdentifier(),
                                                          .program = QCoreApplication::applicationFilePath(),
                                                          .launchctl = *m_launchctl,
                                                          .queue = queue,
                                                          .log = std::move(log)}) {}

} // namespace tarnwick
