#pragma once

#include "players/BackgroundWork.h"
#include "players/mpris/BusThread.h"
#include "players/mpris/TrackDetails.h"
#include "players/mpris/WebPictures.h"
#include "players/tags/TagCache.h"

#include <functional>
#include <memory>

namespace tarnwick::images {
class ImageStore;
}

namespace tarnwick::players {

/// Reads what belongs to a track, in the background. Lives on the bus's thread. What is no longer wanted is
/// dropped.
class TrackLoader {
public:
    /// `isComplete` is false when a better cover may come from the web.
    using Loaded = std::function<void(const TrackDetails& details, bool isComplete)>;
    using AlbumLoaded = std::function<void(const std::shared_ptr<const Library>& library)>;

    /// `cacheFolder` keeps pictures from the web; empty: none are kept.
    TrackLoader(const QString& cacheFolder, BusThread& thread, dispatch::Dispatcher& dispatcher,
                images::ImageStore& images);

    /// Calls `loaded` on the bus's thread, once or, with a cover from the web, twice. Replaces the load
    /// before, and what is still being read of an album.
    void load(const Metadata& metadata, const Loaded& loaded);

    /// Calls `loaded` with the album of `current`, whose file says `inFile`.
    void loadAlbum(const Track& current, const std::shared_ptr<const Track>& inFile,
                   const AlbumLoaded& loaded);

    void cancel();

private:
    struct Wanted; ///< which loads still are; outlives this object where a task holds it

    TrackDetails read(const Metadata& metadata);
    std::optional<Artwork> best(std::vector<QByteArray> pictures) const;
    void loadFromWeb(const Metadata& metadata, const TrackDetails& details, const Loaded& loaded);
    void postIfWanted(int load, std::function<void()> task);

    BusThread& m_thread;
    images::ImageStore& m_images;
    const WebPictureCache m_cache;
    TagCache m_tags;
    WebPictures m_web;
    std::shared_ptr<Wanted> m_wanted;
    BackgroundWork m_work;
};

} // namespace tarnwick::players
