#pragma once

#include "platform/musicapp/BackgroundWork.h"
#include "platform/musicapp/Snapshot.h"
#include "platform/musicapp/mpris/BusThread.h"
#include "platform/musicapp/mpris/PlayerFacts.h"

#include <functional>
#include <memory>

namespace tarnwick::images {
class ImageStore;
}

namespace tarnwick::musicapp {

/// What the machine knows about a track beyond what the player says.
struct TrackDetails {
    QString path; ///< of its file; empty when there is none here
    std::optional<Artwork> artwork;
};

/// Reads what belongs to a track, in the background. Lives on the bus's thread.
class TrackLoader {
public:
    using Loaded = std::function<void(const TrackDetails&)>;

    TrackLoader(BusThread& thread, dispatch::Dispatcher& dispatcher, images::ImageStore& images);

    /// Calls `loaded` on the bus's thread with what was found. A load that has not ended is dropped.
    void load(const Metadata& metadata, Loaded loaded);
    /// Drops a load that has not ended.
    void cancel() { ++*m_current; }

private:
    TrackDetails read(const Metadata& metadata);

    BusThread& m_thread;
    images::ImageStore& m_images;
    std::shared_ptr<int> m_current = std::make_shared<int>(0); ///< number of the load that is wanted
    BackgroundWork m_work;
};

} // namespace tarnwick::musicapp
