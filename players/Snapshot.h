#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/images/Image.h"
#include "players/Library.h"
#include "players/MusicApplication.h"
#include "players/Track.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tarnwick::players {

enum class PlayerState { Stopped, Playing, Paused };

/// A cover. The bytes are shared, so handing them on costs nothing.
struct Artwork {
    QByteArray bytes;                   ///< as encoded
    std::optional<images::Image> image; ///< keeps the decoded picture alive; made off the main thread

    bool operator==(const Artwork& other) const { return image == other.image; }
};

/// Where in the track the player is, as a function of the clock.
struct Position {
    double seconds = 0;          ///< at the instant `at`
    dispatch::Instant at{0};     ///< on the dispatcher's clock
    double rate = 0;             ///< seconds of the track per second; 0 while it does not advance
    std::optional<double> limit; ///< the track's duration, in seconds

    /// In seconds, within 0 and the duration.
    double valueAt(dispatch::Instant now) const;
};

struct Playlist {
    QString id;   ///< the source's own
    QString name; ///< in the player's spelling

    bool operator==(const Playlist&) const = default;
};

/// Everything scripts can ask about a player, at one moment. Immutable once it is published.
struct Snapshot {
    bool running = false; ///< whether there is a player at all
    QString playerName;
    QString playerAddress;   ///< its unique name on the bus; empty when it is on none
    QStringList playerNames; ///< of all that could be asked for, in the order of the alphabet
    PlayerState state = PlayerState::Stopped;
    std::optional<Track> current; ///< none while stopped
    std::optional<Artwork> artwork;
    Position position;
    std::optional<double> volume; ///< 0 to 1; none when the player has none
    std::optional<bool> shuffle;  ///< none when the player has none
    std::shared_ptr<const Library> library = Library::empty();
    std::vector<Playlist> playlists;
    QString currentPlaylist; ///< the name; empty when none plays
    Capabilities capabilities;
};

/// What to announce when `after` follows `before`. A position that only went on is no change; one
/// that is off by half a second or more at `now` is.
Changes difference(const Snapshot& before, const Snapshot& after, dispatch::Instant now);

} // namespace tarnwick::players
