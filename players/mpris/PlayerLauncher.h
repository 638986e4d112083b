#pragma once

#include <QString>

#include <optional>

namespace tarnwick::players {

/// Starts a player by its desktop file. Reads and writes the disk, so not on the main thread.
class PlayerLauncher {
public:
    /// `stateFile` keeps the last player's name (empty: it is forgotten); a started player finds the bus at
    /// `busAddress` (empty: where it finds it anyway).
    PlayerLauncher(QString stateFile, QString busAddress)
        : m_stateFile(std::move(stateFile)), m_busAddress(std::move(busAddress)) {}

    /// `desktopEntry` is the name of the desktop file of the player followed now, without suffix.
    void remember(const QString& desktopEntry) const;

    /// What was remembered last; empty when nothing was.
    QString remembered() const;

    /// Starts the player called `name` or, when that is empty, the one followed last, else the desktop's
    /// handler for audio files. Why it failed, in one line; none when a program has been started.
    std::optional<QString> start(const QString& name) const;

private:
    QString desktopFile(const QString& name) const;

    const QString m_stateFile;
    const QString m_busAddress;
};

} // namespace tarnwick::players
