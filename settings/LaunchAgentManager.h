#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/launchctl/Launchctl.h"

#include <QString>

#include <functional>

namespace tarnwick {

/// Writes, registers, unregisters and deletes the file that starts the program at login. It has no
/// state of its own; every operation looks at the file.
///
/// The operations run on the queue that the manager is given and print what goes wrong; nothing is
/// retried.
class LaunchAgentManager {
public:
    struct Parts {
        QString folder;     ///< where agents lie
        QString identifier; ///< of the application; names the agent and its file
        QString program;    ///< absolute path of the executable
        launchctl::Launchctl& launchctl;
        /// Runs its tasks one after the other; null: the operations run on the caller's thread.
        dispatch::Queue* queue = nullptr;
        std::function<void(const QString& line)> log; ///< called on the queue
    };

    /// The user's folder of agents.
    static QString standardFolder();

    /// What `parts` refers to must outlive the manager and its operations.
    explicit LaunchAgentManager(Parts parts);

    /// Writes and registers the agent, unless both was done and still holds: a file that says something else,
    /// like the path of another executable, is written anew, and a registration that is gone is made again.
    void installLaunchAgent();

    /// Unregisters the agent and deletes its file, if there is one.
    void removeLaunchAgent();

    /// Unregisters the agent, if there is one; the next login brings it back.
    void deactivateLaunchAgent();

    /// Where the agent's file is, when there is one.
    QString agentFile() const;
    bool isInstalled() const;

    /// The content of the agent's file.
    QByteArray document() const;

private:
    /// An operation; returns why it failed, empty when it did not.
    using Operation = QString (LaunchAgentManager::*)() const;

    void run(Operation operation, const QString& failure) const;
    QString install() const;
    QString writeDocument() const;
    QString remove() const;
    QString deactivate() const;

    const Parts m_parts;
};

} // namespace tarnwick
