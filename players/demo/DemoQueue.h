#pragma once

#include "players/demo/DemoLibrary.h"

#include <vector>

namespace tarnwick::players {

/// What the simulated player plays, and in which order: the tracks of a playlist, or of an album. Tracks are
/// numbers in the library. Never empty; after the last track comes the first.
class DemoQueue {
public:
    /// Stands at the track that the scene is about, in the playlist that it is played from. `library` must
    /// outlive this object.
    explicit DemoQueue(const DemoLibrary& library);

    /// The current track stays the same.
    void setShuffled(bool shuffled);
    void goForward();
    void goBack();
    /// Goes to `track`; when it is not in the queue, its album becomes the queue.
    void goTo(int track);
    /// Begins the playlist of this id; false when there is none or it is empty.
    bool begin(const Playlist& playlist);

    int current() const { return m_tracks[static_cast<std::size_t>(m_place)]; }
    int following() const { return m_tracks[static_cast<std::size_t>(after(m_place))]; }
    bool isShuffled() const { return m_isShuffled; }
    /// What the queue is made of; null when that is an album.
    const DemoPlaylist* playlist() const;

private:
    int after(int place) const { return (place + 1) % static_cast<int>(m_tracks.size()); }
    void fill();

    const DemoLibrary& m_library;
    std::vector<int> m_tracks; ///< in playing order
    int m_place = 0;           ///< of the current one
    int m_playlist = -1;       ///< number of the one that this is made of; -1: the album of the track
    bool m_isShuffled = false;
};

} // namespace tarnwick::players
