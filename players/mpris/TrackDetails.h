#pragma once

#include "players/Snapshot.h"
#include "players/mpris/PlayerFacts.h"

#include <QDate>
#include <QList>

#include <memory>

namespace tarnwick::players {

/// What the machine knows about a track beyond what the player says.
struct TrackDetails {
    std::shared_ptr<const Track> file; ///< what its file says; null when there is none here
    QList<QDate> fileDates;            ///< on which the file was changed, written or moved, and made
    std::optional<Artwork> artwork;
};

/// The track as it is to be shown: of every fact the first source that has it. `today` tells a release date
/// from the day on which somebody copied the file.
Track describe(const Metadata& metadata, const TrackDetails& details, QDate today);

} // namespace tarnwick::players
