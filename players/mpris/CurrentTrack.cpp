#include "players/mpris/CurrentTrack.h"

#include <utility>

namespace tarnwick::players {

namespace {

constexpr int coverPatience = 150; // ms that a new album waits for its cover

} // namespace

CurrentTrack::CurrentTrack(const QString& cacheFolder, BusThread& thread, dispatch::Dispatcher& dispatcher,
                           images::ImageStore& images, std::function<void()> changed)
    : m_changed(std::move(changed)), m_loader(cacheFolder, thread, dispatcher, images) {
    m_patience.setSingleShot(true);
    m_patience.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] { m_changed(); });
}

void CurrentTrack::follow(PlayerLink* player) {
    m_player = player;
    m_serial = 0;
    m_isLoading = false;
    m_isFileKnown = false;
    m_isLoadingAlbum = false;
    ++m_albumSerial;
    m_loader.cancel();
    m_details = {};
    m_patience.stop();
}

void CurrentTrack::beliefChanged() {
    const Belief& belief = m_player->belief();
    if (belief.trackSerial != m_serial || belief.metadata.url != m_detailed.url ||
        belief.metadata.artUrl != m_detailed.artUrl) {
        loadDetails();
        return;
    }
    m_detailed = belief.metadata;
    if (!m_isFileKnown)
        return;
    // Some players name the album a good while after the file.
    const Track current = described();
    if (current.name != m_albumOf.name || current.album != m_albumOf.album)
        loadAlbum();
}

void CurrentTrack::trackListChanged(PlayerLink& link) {
    link.trackList().invalidate();
    // While the file is still being sought, the album is loaded in any case as soon as that is done.
    if (&link == m_player && m_isFileKnown && !m_details.file)
        loadAlbum();
}

void CurrentTrack::loadDetails() {
    const Belief& belief = m_player->belief();
    const bool isNewTrack = belief.trackSerial != m_serial;
    m_serial = belief.trackSerial;
    const Metadata before = std::exchange(m_detailed, belief.metadata);
    if (isNewTrack) {
        m_details.file.reset();
        m_details.fileDates = {};
        if (!isSameAlbum(before, m_detailed))
            m_details.artwork.reset();
        if (m_details.artwork && !namesFile(m_detailed.url))
            m_patience.stop();
        else
            m_patience.start(coverPatience); // for the cover, and for what the file says
        m_player->playlists().refresh();
    }
    m_isLoading = true;
    m_isFileKnown = false;
    m_isLoadingAlbum = true;
    ++m_albumSerial;
    m_loader.load(belief.metadata, [this](const TrackDetails& details, bool isComplete) {
        detailsLoaded(details, isComplete);
    });
}

void CurrentTrack::detailsLoaded(const TrackDetails& details, bool isComplete) {
    const bool isFirst = !std::exchange(m_isFileKnown, true);
    m_isLoading = !isComplete;
    const auto before = m_details.artwork;
    m_details = details;
    // Within a track, and within an album, a cover that is there stays.
    if (!m_details.artwork)
        m_details.artwork = before;
    if (isComplete || details.artwork)
        m_patience.stop();
    if (isFirst)
        loadAlbum();
    if (!isAwaited())
        m_changed();
}

void CurrentTrack::loadAlbum() {
    m_isLoadingAlbum = true;
    m_albumOf = described();
    const int serial = ++m_albumSerial;
    if (!m_details.file) {
        albumFromTrackList(serial);
        return;
    }
    m_loader.loadAlbum(m_albumOf, m_details.file,
                       [this, serial](const std::shared_ptr<const Library>& album) {
                           if (serial == m_albumSerial)
                               albumLoaded(album);
                       });
}

/// The tracks of the current album in the player's own list, where no files can be looked at.
void CurrentTrack::albumFromTrackList(int serial) {
    PlayerLink* link = m_player;
    link->trackList().refresh([this, link, serial] {
        if (serial != m_albumSerial)
            return;
        const Metadata& current = link->belief().metadata;
        std::vector<Track> tracks;
        for (const Metadata& entry : link->trackList().entries()) {
            const bool isOfIt = current.track.album.isEmpty() ? isSameAlbum(current, entry)
                                                              : entry.track.album == current.track.album;
            if (isOfIt && !entry.track.name.isEmpty()) // one without title and file is nothing to choose
                tracks.push_back(entry.track);
        }
        albumLoaded(std::make_shared<const Library>(std::move(tracks)));
        if (link->trackList().isOverdue())
            link->whenItAnswers([this, link] { trackListChanged(*link); });
    });
}

void CurrentTrack::albumLoaded(const std::shared_ptr<const Library>& album) {
    m_isLoadingAlbum = false;
    if (album->tracks() != m_album->tracks())
        m_album = album;
    if (!isAwaited())
        m_changed();
}

Track CurrentTrack::described() const {
    return describe(m_player->belief().metadata, m_details, QDate::currentDate());
}

} // namespace tarnwick::players
