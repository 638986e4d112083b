#pragma once

#include "players/Snapshot.h"
#include "script/values/Application.h"

#include <memory>

/// The objects inside the application: what `current track`, `library playlist 1`, `artwork 1` give.
namespace tarnwick::players {

using SnapshotPointer = std::shared_ptr<const Snapshot>;

/// A track. Holds what it belongs to alive, and never changes.
class TrackObject final : public script::Object {
public:
    /// A track of `library`.
    TrackObject(const std::shared_ptr<const Library>& library, int number);
    /// The current track of `snapshot`, which must have one.
    explicit TrackObject(const SnapshotPointer& snapshot);

    const Track& track() const { return *m_track; }

    script::Term objectClass() const override;
    QString specifier() const override;
    script::Value property(script::Term property) const override;
    std::vector<script::ObjectPointer> elements(const script::Query& query) const override;
    bool isSame(const script::Object& other) const override;

private:
    std::shared_ptr<const Track> m_track;
    SnapshotPointer m_current; ///< null unless this is the current track
    int m_number = 0;          ///< in the library, from 1; 0 for the current track
};

/// The playlist of everything.
class LibraryPlaylistObject final : public script::Object {
public:
    explicit LibraryPlaylistObject(std::shared_ptr<const Library> library) : m_library(std::move(library)) {}

    script::Term objectClass() const override;
    QString specifier() const override;
    script::Value property(script::Term property) const override;
    std::vector<script::ObjectPointer> elements(const script::Query& query) const override;
    qint64 count(const script::Query& query) const override;
    std::vector<script::Value> values(const script::Query& query, script::Term property) const override;
    bool isSame(const script::Object& other) const override;

private:
    std::vector<int> found(const script::Query& query) const;

    std::shared_ptr<const Library> m_library;
};

/// A playlist of the user's.
class UserPlaylistObject final : public script::Object {
public:
    explicit UserPlaylistObject(Playlist playlist) : m_playlist(std::move(playlist)) {}

    const Playlist& playlist() const { return m_playlist; }

    script::Term objectClass() const override;
    QString specifier() const override;
    script::Value property(script::Term property) const override;
    bool isSame(const script::Object& other) const override;

private:
    Playlist m_playlist;
};

/// The picture of a track.
class ArtworkObject final : public script::Object {
public:
    explicit ArtworkObject(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    script::Term objectClass() const override;
    QString specifier() const override;
    script::Value property(script::Term property) const override;

private:
    QByteArray m_bytes;
};

/// Those of `objects` that `query` means, its class aside.
std::vector<script::ObjectPointer> select(std::vector<script::ObjectPointer> objects,
                                          const script::Query& query);

} // namespace tarnwick::players
