#pragma once

#include "players/Player.h"
#include "players/mpris/PlayerLink.h"

#include <vector>

namespace tarnwick::players {

// What a player is asked to do. Each returns at once and calls `done` when the player has answered; with a
// player that goes meanwhile `done` is dropped.

/// `now` is the time on the dispatcher's clock.
void sendCommand(PlayerLink& link, Player::Command command, dispatch::Instant now,
                 const PlayerLink::Done& done);

/// A title of an album that is to be played.
struct TitleRequest {
    Track track;
    std::vector<Track> onwards; ///< the album from that title on, the title among them
    QString cacheFolder;        ///< where a playlist for the player can be left; empty: nowhere
};

/// The tracks of `library` that stand in one list with `track`, as the list shows them, from `track` on.
std::vector<Track> albumFrom(const Library& library, const Track& track);

/// Goes to the player's own entry of that track where it lists one; else lets it open a playlist of the album
/// from there on, so that the music goes on after the title, where it takes such a thing; else the file. A
/// player that was paused plays then. One that does not play the title of a playlist within two seconds gets
/// the file, and no playlist again.
void playTrack(PlayerLink& link, const TitleRequest& request, const PlayerLink::Done& done);

/// Starts a playlist of the player's, even with those that must be stopped first. `dispatcher` must outlive
/// the link.
void playPlaylist(PlayerLink& link, const Playlist& playlist, const dispatch::Dispatcher& dispatcher,
                  const PlayerLink::Done& done);

} // namespace tarnwick::players
