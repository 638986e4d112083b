#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "players/Snapshot.h"

#include <QString>

#include <memory>
#include <optional>

namespace tarnwick::players {

/// What the object model needs of a source. Every member may be called on any thread, and none but
/// `launch` lasts: a command is sent off, and what it did is seen in a later snapshot.
class Player {
public:
    enum class Command { Play, Pause, PlayPause, Stop, NextTrack, PreviousTrack };

    Player() = default;
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    virtual ~Player() = default;

    /// What is known now; never null.
    virtual std::shared_ptr<const Snapshot> snapshot() const = 0;
    virtual dispatch::Instant now() const = 0;

    /// Somebody looked at the position, which is a reason to ask the player for it again.
    virtual void positionWasRead() = 0;
    /// The same of the playlists.
    virtual void playlistsWereRead() = 0;

    virtual void command(Command command) = 0;
    /// 0 to 1. Stands in the snapshot when this returns.
    virtual void setVolume(double volume) = 0;
    /// Stands in the snapshot when this returns.
    virtual void setShuffle(bool shuffle) = 0;
    /// Seconds from the track's beginning.
    virtual void setPosition(double seconds) = 0;
    virtual void play(const Track& track) = 0;
    virtual void play(const Playlist& playlist) = 0;

    /// Starts a player when none runs, and blocks until its first state has arrived, 10 s at most. Why it
    /// failed, in one line; none when there is a player now.
    virtual std::optional<QString> launch() = 0;
};

} // namespace tarnwick::players
