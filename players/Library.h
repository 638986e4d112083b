#pragma once

#include "players/Track.h"

#include <QHash>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace tarnwick::players {

/// An immutable list of tracks that finds those of an album without looking at the others.
class Library {
public:
    /// The one without tracks.
    static std::shared_ptr<const Library> empty();

    Library() = default;
    explicit Library(std::vector<Track> tracks);

    const std::vector<Track>& tracks() const { return m_tracks; }

    /// The numbers of the tracks whose album is `album`, in the list's order; texts are equal
    /// where scripts take them for equal. An empty text finds the tracks without an album.
    std::span<const int> ofAlbum(const QString& album) const;

    /// The same by title.
    std::span<const int> named(const QString& name) const;

private:
    using Index = QHash<QString, std::vector<int>>;

    std::vector<Track> m_tracks;
    Index m_byAlbum;
    Index m_byName;
};

} // namespace tarnwick::players
