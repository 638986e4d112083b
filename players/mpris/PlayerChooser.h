#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "players/Snapshot.h"

#include <QString>

#include <optional>
#include <vector>

namespace tarnwick::players {

/// One player as far as the choice goes.
struct Candidate {
    QString owner;
    QString name;                                ///< on the bus; decides where nothing else does
    PlayerState state = PlayerState::Stopped;    ///< one that hangs counts as stopped
    std::optional<dispatch::Instant> lastPlayed; ///< none when it was never seen playing
    dispatch::Instant since{0};                  ///< it plays, is paused or stopped
    bool wasFound = false; ///< in that state, when the search for players began: since when is not known
    QString song; ///< what it plays or would go on with; equal texts are the same song, empty is none
    bool isRemembered = false; ///< it was the last one to be followed before
};

/// Which of `candidates` is to be followed when `current` is now; its owner, empty when there is none to
/// follow. The current one stays while it plays; else the one that began to play last; else a paused one, the
/// one that played last before others; else the current one, or the one that was followed before, or the
/// first by name. Another player that has been playing the current one's song since before that one paused is
/// its echo.
QString choosePlayer(const std::vector<Candidate>& candidates, const QString& current);

} // namespace tarnwick::players
