#include "players/demo/DemoQueue.h"

#include "players/demo/CoverCanvas.h"

#include <algorithm>

namespace tarnwick::players {

DemoQueue::DemoQueue(const DemoLibrary& library)
    : m_library(library), m_tracks{library.sceneTrack}, m_playlist(library.scenePlaylist) {
    fill();
}

void DemoQueue::setShuffled(bool shuffled) {
    m_isShuffled = shuffled;
    fill();
}

void DemoQueue::goForward() { m_place = after(m_place); }

void DemoQueue::goBack() {
    const int size = static_cast<int>(m_tracks.size());
    m_place = (m_place + size - 1) % size;
}

void DemoQueue::goTo(int track) {
    const auto queued = std::find(m_tracks.begin(), m_tracks.end(), track);
    if (queued != m_tracks.end()) {
        m_place = static_cast<int>(queued - m_tracks.begin());
        return;
    }
    m_playlist = -1;
    m_tracks = {track};
    m_place = 0;
    fill();
}

bool DemoQueue::begin(const Playlist& playlist) {
    for (std::size_t i = 0; i < m_library.playlists.size(); ++i) {
        const DemoPlaylist& known = m_library.playlists[i];
        if (known.playlist.id != playlist.id || known.tracks.empty())
            continue;
        m_playlist = static_cast<int>(i);
        m_tracks = {known.tracks.front()};
        m_place = 0;
        fill();
        m_place = 0;
        return true;
    }
    return false;
}

const DemoPlaylist* DemoQueue::playlist() const {
    return m_playlist < 0 ? nullptr : &m_library.playlists[static_cast<std::size_t>(m_playlist)];
}

/// Makes the queue of the playlist, or of the album, around the current track.
void DemoQueue::fill() {
    const int stays = current();
    if (const DemoPlaylist* source = playlist()) {
        m_tracks = source->tracks;
    } else {
        const auto& tracks = m_library.library->tracks();
        const auto album = m_library.library->ofAlbum(tracks[static_cast<std::size_t>(stays)].album);
        m_tracks.assign(album.begin(), album.end());
    }
    if (m_isShuffled) {
        Dice dice(m_tracks.size());
        for (std::size_t i = m_tracks.size() - 1; i > 0; --i)
            std::swap(m_tracks[i],
                      m_tracks[static_cast<std::size_t>(dice.roll() * static_cast<double>(i + 1))]);
    }
    m_place = static_cast<int>(std::find(m_tracks.begin(), m_tracks.end(), stays) - m_tracks.begin());
}

} // namespace tarnwick::players
