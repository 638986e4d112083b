#pragma once

#include "players/Track.h"

#include <functional>
#include <vector>

namespace tarnwick::players {

class TagCache;

/// The tracks of the album that `current` belongs to: the music files in its folder and, where that is
/// named like "CD1" or "Disc 2", in the folders beside it that are named so too, as far as they are of the
/// same album; by disc, number and file name. `current` stands among them as it is given, and the others
/// have its album and artist in its spelling. `current.path` must be that of its file, `inFile` what that
/// file says.
///
/// Reads the disk, so only in the background. Ends early, with what it has, when `isUnwanted` says so.
std::vector<Track> readAlbum(const Track& current, const Track& inFile, TagCache& tags,
                             const std::function<bool()>& isUnwanted);

} // namespace tarnwick::players
