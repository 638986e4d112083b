#include "players/mpris/TrackLoader.h"

#include "platform/images/ImageStore.h"
#include "players/mpris/LocalFile.h"
#include "players/mpris/LocalPictures.h"
#include "players/tags/AlbumFolder.h"

#include <atomic>

namespace tarnwick::players {

namespace {

/// What tells an album from others of its name: whose it is. A track without one is an album of its own.
QString albumKey(const Metadata& metadata) {
    const Track& track = metadata.track;
    const QString& whose = metadata.albumArtist.isEmpty() ? track.artist : metadata.albumArtist;
    return (track.album.isEmpty() ? u'\n' + track.name : track.album) + u'\n' + whose;
}

} // namespace

struct TrackLoader::Wanted {
    std::atomic<int> track = 0;
    std::atomic<int> album = 0;
};

TrackLoader::TrackLoader(const QString& cacheFolder, BusThread& thread, dispatch::Dispatcher& dispatcher,
                         images::ImageStore& images)
    : m_thread(thread), m_images(images), m_cache(cacheFolder), m_wanted(std::make_shared<Wanted>()),
      m_work(dispatcher.globalQueue(dispatch::QualityOfService::Background)) {}

void TrackLoader::load(const Metadata& metadata, const Loaded& loaded) {
    cancel();
    const int number = m_wanted->track;
    m_work.run([this, number, metadata, loaded] {
        if (number != m_wanted->track)
            return;
        const TrackDetails details = read(metadata);
        const QByteArray kept = WebPictures::isWebUrl(metadata.artUrl)
                                    ? m_cache.find(metadata.artUrl, albumKey(metadata))
                                    : QByteArray();
        if (!kept.isEmpty() || !WebPictures::isWebUrl(metadata.artUrl)) {
            TrackDetails all = details;
            if (!kept.isEmpty())
                all.artwork =
                    best(details.artwork ? std::vector{kept, details.artwork->bytes} : std::vector{kept});
            postIfWanted(number, [loaded, all = std::move(all)] { loaded(all, true); });
            return;
        }
        postIfWanted(number, [this, metadata, details, loaded] {
            loaded(details, false);
            loadFromWeb(metadata, details, loaded);
        });
    });
}

void TrackLoader::loadAlbum(const Track& current, const std::shared_ptr<const Track>& inFile,
                            const AlbumLoaded& loaded) {
    const int number = ++m_wanted->album;
    const int track = m_wanted->track;
    m_work.run([this, number, track, current, inFile, loaded] {
        const auto isUnwanted = [&] { return number != m_wanted->album || m_work.isClosed(); };
        if (isUnwanted())
            return;
        const auto library = std::make_shared<const Library>(readAlbum(current, *inFile, m_tags, isUnwanted));
        if (!isUnwanted())
            postIfWanted(track, [loaded, library] { loaded(library); });
    });
}

void TrackLoader::cancel() {
    ++m_wanted->track;
    ++m_wanted->album;
    m_web.cancel();
}

TrackDetails TrackLoader::read(const Metadata& metadata) {
    TrackDetails details;
    const QString path = localPathOf(metadata.url);
    details.file = path.isEmpty() ? nullptr : m_tags.read(path);
    if (details.file)
        details.fileDates = datesOfFile(path);
    details.artwork = best(findLocalPictures(metadata.artUrl, details.file ? path : QString()));
    return details;
}

/// The largest of `pictures` that is one.
std::optional<Artwork> TrackLoader::best(std::vector<QByteArray> pictures) const {
    sortBySize(pictures);
    for (const QByteArray& picture : pictures) {
        if (auto image = m_images.decode(picture))
            return Artwork{picture, image};
    }
    return std::nullopt;
}

void TrackLoader::loadFromWeb(const Metadata& metadata, const TrackDetails& details, const Loaded& loaded) {
    const int number = m_wanted->track;
    m_web.load(metadata.artUrl, [this, number, metadata, details, loaded](const QByteArray& bytes) {
        if (bytes.isEmpty()) {
            loaded(details, true);
            return;
        }
        m_work.run([this, number, metadata, details, loaded, bytes] {
            TrackDetails all = details;
            if (pixelsOf(bytes) > 0) {
                m_cache.keep(metadata.artUrl, albumKey(metadata), bytes);
                all.artwork =
                    best(details.artwork ? std::vector{bytes, details.artwork->bytes} : std::vector{bytes});
            }
            postIfWanted(number, [loaded, all = std::move(all)] { loaded(all, true); });
        });
    });
}

/// Runs `task` on the bus's thread, if the load of that number is still wanted then.
void TrackLoader::postIfWanted(int load, std::function<void()> task) {
    m_thread.post([wanted = std::weak_ptr(m_wanted), load, task = std::move(task)] {
        if (const auto still = wanted.lock(); still && still->track == load)
            task();
    });
}

} // namespace tarnwick::players
