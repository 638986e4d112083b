#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QString>

#include <optional>
#include <vector>

namespace tarnwick::musicapp {

/// One player as far as the choice goes.
struct Candidate {
    QString owner;
    bool isPlaying = false;
    std::optional<dispatch::Instant> lastPlayed; ///< none when it was never seen playing
    dispatch::Instant since{0};                  ///< it plays, is paused or stopped
    QString song; ///< what it plays or would go on with; equal texts are the same song, empty is none
};

/// Which of `candidates`, in the order in which they appeared, is to be followed when `current` is now; its
/// owner, empty when there is none to follow. The current one stays while it plays; else one that plays, else
/// the one that played last, else the first. Another player that has been playing the current one's song
/// since before that one paused is its echo.
QString choosePlayer(const std::vector<Candidate>& candidates, const QString& current);

} // namespace tarnwick::musicapp
