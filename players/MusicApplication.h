#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QFlags>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tarnwick::script {
class ApplicationProvider;
}

namespace tarnwick::players {

/// What changed at the player since the last announcement.
enum class Change : unsigned {
    Track = 1U << 0,    ///< the current track, or a fact of it that came later (tags, cover)
    State = 1U << 1,    ///< playing, paused, stopped
    Position = 1U << 2, ///< the position jumped; its ordinary advance is not announced
    Volume = 1U << 3,
    Shuffle = 1U << 4,
    Playlist = 1U << 5,     ///< the playlists, or which of them plays
    Library = 1U << 6,      ///< the tracks of the current album as far as they are known
    Capabilities = 1U << 7, ///< what the player can do
    Player = 1U << 8,       ///< another player, or none
};
Q_DECLARE_FLAGS(Changes, Change)
Q_DECLARE_OPERATORS_FOR_FLAGS(Changes)

/// What the current player says it can do. All false when there is none. A hint for dimming a
/// button: a player may still ignore a command that it claims to know.
struct Capabilities {
    bool canPlay = false; ///< play and pause
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canShuffle = false;
    bool canSetVolume = false;
    bool canSeek = false;
    bool canOpenTitle = false; ///< a title of the album can be started
    bool hasPlaylists = false;

    bool operator==(const Capabilities&) const = default;
};

/// The application that scripts know as "Music". Every member may be called on any thread.
///
/// Scripts are answered from an immutable snapshot and never wait for a player. Only the script
/// commands `launch` and `delay` last.
class MusicApplication {
public:
    using ChangeHandler = std::function<void(Changes)>;
    using RefusalHandler = std::function<void(const QString& line)>;

    MusicApplication() = default;
    MusicApplication(const MusicApplication&) = delete;
    MusicApplication& operator=(const MusicApplication&) = delete;
    virtual ~MusicApplication() = default;

    /// Where a script's `tell application "Music"` finds it. Lives as long as this object.
    virtual script::ApplicationProvider& scripting() = 0;

    virtual Capabilities capabilities() const = 0;

    /// The name a person knows the player by ("VLC media player"); empty when there is none.
    virtual QString playerName() const = 0;

    /// Where the player is found by other programs, a unique name on the bus; empty when there is none or it
    /// is in this program.
    virtual QString playerAddress() const { return {}; }

    /// The names by which the players that are there can be asked for, in the order of the alphabet.
    virtual QStringList playerNames() const { return {}; }

    /// `handler` is called, on a thread of this object's choice, with a line for people when the player has
    /// refused to play a title. As `setChangeHandler` otherwise.
    virtual void setRefusalHandler(RefusalHandler handler) { Q_UNUSED(handler) }

    /// `handler` is called, on a thread of this object's choice, after the snapshot has changed. It
    /// replaces the one before, which is not running any more when this returns; so it must not be
    /// called from a handler. An empty one ends the announcements.
    virtual void setChangeHandler(ChangeHandler handler) = 0;

    /// Blocks until it is known which player there is, if any, and its first state has arrived; for
    /// another process at most `timeout`. Whether it did. Not for the main thread.
    virtual bool waitUntilReady(dispatch::Duration timeout) = 0;

    /// Like `waitUntilReady`, and until the tags, the cover and the album of the current track have been
    /// read too, or found missing.
    virtual bool waitUntilComplete(dispatch::Duration timeout) = 0;

    /// Blocks until the player has answered every command given so far, at most `timeout`. The reason
    /// why the first of them failed since the last call, in one line; none when all went well. Not
    /// for the main thread.
    virtual std::optional<QString> finishCommands(dispatch::Duration timeout) = 0;
};

} // namespace tarnwick::players
