#pragma once

#include "platform/musicapp/Player.h"
#include "platform/musicapp/mpris/PlayerLink.h"

namespace tarnwick::musicapp {

// What a player is asked to do. Each returns at once and calls `done` when the player has answered; with a
// player that goes meanwhile `done` is dropped.

/// `now` is the time on the dispatcher's clock.
void sendCommand(PlayerLink& link, Player::Command command, dispatch::Instant now,
                 const PlayerLink::Done& done);

/// Goes to the player's own entry of that track where it lists one, else lets it open the file; a player that
/// was paused plays then.
void playTrack(PlayerLink& link, const Track& track, const PlayerLink::Done& done);

/// Starts a playlist of the player's, even with those that must be stopped first. `dispatcher` must outlive
/// the link.
void playPlaylist(PlayerLink& link, const Playlist& playlist, const dispatch::Dispatcher& dispatcher,
                  const PlayerLink::Done& done);

} // namespace tarnwick::musicapp
