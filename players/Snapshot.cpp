#include "players/Snapshot.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::players {

namespace {

// Players that count whole seconds are off by up to this much without having jumped.
constexpr double jump = 0.5;

bool saysTheSame(const std::optional<Track>& a, const std::optional<Track>& b) {
    return a && b ? saysTheSame(*a, *b) : a.has_value() == b.has_value();
}

} // namespace

double Position::valueAt(dispatch::Instant now) const {
    const double passed = std::chrono::duration<double>(now - at).count();
    const double value = std::max(0.0, seconds + std::max(0.0, passed) * rate);
    return limit ? std::min(value, *limit) : value;
}

Changes difference(const Snapshot& before, const Snapshot& after, dispatch::Instant now) {
    Changes changes;
    changes.setFlag(Change::Player, before.running != after.running ||
                                        before.playerName != after.playerName ||
                                        before.playerAddress != after.playerAddress);
    changes.setFlag(Change::State, before.running != after.running || before.state != after.state);
    changes.setFlag(Change::Track,
                    !saysTheSame(before.current, after.current) || before.artwork != after.artwork);
    changes.setFlag(Change::Position,
                    std::abs(before.position.valueAt(now) - after.position.valueAt(now)) >= jump);
    changes.setFlag(Change::Volume, before.volume != after.volume);
    changes.setFlag(Change::Shuffle, before.shuffle != after.shuffle);
    changes.setFlag(Change::Playlist,
                    before.playlists != after.playlists || before.currentPlaylist != after.currentPlaylist);
    changes.setFlag(Change::Library, before.library != after.library);
    changes.setFlag(Change::Capabilities, before.capabilities != after.capabilities);
    return changes;
}

} // namespace tarnwick::players
