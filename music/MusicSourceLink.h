#pragma once

#include "music/MusicSource.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace tarnwick {

/// What requests that are under way hold instead of the source itself, so that they may end after it.
struct MusicSource::Link {
    explicit Link(const Parts& parts_) : parts(parts_) {}

    const Parts parts;
    MusicSource* source = nullptr; ///< main thread only; null once the source is gone

    /// Held from the start of a script until its reply is queued, so that replies of one text are
    /// applied in the order in which Music gave them.
    std::mutex nowPlayingOrder, shuffleOrder, volumeOrder, playlistOrder;

    /// What has been announced and not been asked for yet.
    std::atomic<unsigned> announced = 0;

    /// The one request for the tracks by disc that runs, and what waits for the next one.
    std::mutex tracksMutex;
    bool tracksRunning = false;
    bool tracksWanted = false;
    QString tracksAlbum; ///< its identity
    std::vector<dispatch::Task> tracksApplied;
};

} // namespace tarnwick
