#include "players/Library.h"

#include "script/values/Coercion.h"

namespace tarnwick::players {

namespace {

std::span<const int> found(const QHash<QString, std::vector<int>>& index, const QString& text) {
    const auto entry = index.constFind(script::comparisonKey(text));
    return entry == index.constEnd() ? std::span<const int>() : std::span<const int>(*entry);
}

} // namespace

std::shared_ptr<const Library> Library::empty() {
    static const auto instance = std::make_shared<const Library>();
    return instance;
}

Library::Library(std::vector<Track> tracks) : m_tracks(std::move(tracks)) {
    for (std::size_t i = 0; i < m_tracks.size(); ++i) {
        m_byAlbum[script::comparisonKey(m_tracks[i].album)].push_back(static_cast<int>(i));
        m_byName[script::comparisonKey(m_tracks[i].name)].push_back(static_cast<int>(i));
    }
}

std::span<const int> Library::ofAlbum(const QString& album) const { return found(m_byAlbum, album); }

std::span<const int> Library::named(const QString& name) const { return found(m_byName, name); }

} // namespace tarnwick::players
