#pragma once

#include "players/Library.h"
#include "players/mpris/BusThread.h"
#include "players/mpris/PlayerLink.h"
#include "players/mpris/TrackLoader.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace tarnwick::players {

/// The current track of the followed player with what belongs to it: what its file says, its cover, its
/// album. Each is loaded when the track changes and takes the place of the one before when it arrives. Lives
/// on the bus's thread.
class CurrentTrack {
public:
    /// `changed` is called whenever something has arrived while nothing is awaited, and when the wait is
    /// over.
    CurrentTrack(const QString& cacheFolder, BusThread& thread, dispatch::Dispatcher& dispatcher,
                 images::ImageStore& images, std::function<void()> changed);

    /// From now on the track of `player`, null: of nobody. Drops what belonged to the one before.
    void follow(PlayerLink* player);

    /// What is believed about the followed player may have changed: loads what has to be. There must be one.
    void beliefChanged();

    /// The list of this player, followed or not, is another one.
    void trackListChanged(PlayerLink& player);

    /// Whether the track should not be shown yet, because its cover may come soon.
    bool isAwaited() const { return m_patience.isActive(); }
    /// Whether something of it is still being read.
    bool isLoading() const { return m_isLoading || m_isLoadingAlbum; }

    /// The track with all that is known of it. There must be a followed player.
    Track described() const;
    /// None when there is no cover, or none yet.
    const std::optional<Artwork>& artwork() const { return m_details.artwork; }
    /// The album that was loaded last, of this track or of one before; never null.
    const std::shared_ptr<const Library>& album() const { return m_album; }

private:
    void loadDetails();
    void detailsLoaded(const TrackDetails& details, bool isComplete);
    void loadAlbum();
    void albumFromTrackList(int serial);
    void albumLoaded(const std::shared_ptr<const Library>& album);

    const std::function<void()> m_changed;
    TrackLoader m_loader;
    PlayerLink* m_player = nullptr;
    int m_serial = 0;    ///< of the track that the details are of
    Metadata m_detailed; ///< of the same
    TrackDetails m_details;
    bool m_isLoading = false;
    bool m_isFileKnown = false; ///< whether there is one has been found out
    bool m_isLoadingAlbum = false;
    Track m_albumOf;       ///< the track that the album was wanted for last, as it was described then
    int m_albumSerial = 0; ///< of the album that is wanted; what comes of others is dropped
    std::shared_ptr<const Library> m_album = Library::empty();
    QTimer m_patience; ///< runs while a new album waits for its cover
};

} // namespace tarnwick::players
