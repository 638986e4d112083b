#pragma once

#include "players/Library.h"
#include "players/Snapshot.h"
#include "players/demo/DemoScene.h"

#include <vector>

namespace tarnwick::players {

/// A playlist of the demo and the numbers of its tracks in the library.
struct DemoPlaylist {
    Playlist playlist;
    std::vector<int> tracks;
};

/// The playlists over `library`, whose first `realTracks` tracks are those of the invented albums.
std::vector<DemoPlaylist> makeDemoPlaylists(const Library& library, int realTracks, DemoScene scene);

} // namespace tarnwick::players
