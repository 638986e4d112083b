#pragma once

#include "players/Snapshot.h"

#include <QDate>
#include <QString>
#include <QVariantMap>

namespace tarnwick::players {

/// What a player's metadata say about a track, put right. Facts that only the file can tell are missing.
struct Metadata {
    Track track;    ///< `id` is the player's own track id; no path
    QString url;    ///< as the player spells it; empty when it gives none
    QString artUrl; ///< the same
    QString albumArtist;
    bool titleIsFileName = false; ///< the player had nothing better
    int contentYear = 0;          ///< of `xesam:contentCreated`, which may be the file's date
    QDate contentDate;            ///< the same, when it is a whole date

    /// Whether there is anything at all that could be playing.
    bool isEmpty() const { return track.name.isEmpty() && track.artist.isEmpty() && track.album.isEmpty(); }

    bool operator==(const Metadata&) const = default;
};

/// Whether the two are about the same track, whatever the player's track ids say.
bool isSameTrack(const Metadata& before, const Metadata& after);

/// Whether the two are of one album: of the same name and by the same artist or in the same folder, as far as
/// that is known; without a name, in the same folder or, of streams, by the same artist.
bool isSameAlbum(const Metadata& before, const Metadata& after);

/// Whether `url` is spelt like a local file's, in whatever way players do.
bool namesFile(const QString& url);

/// A player's state, as far as one reading of its properties goes.
struct PlayerFacts {
    PlayerState status = PlayerState::Stopped;
    Metadata metadata;
    std::optional<double> position; ///< seconds; none when the player does not tell
    double rate = 1;
    std::optional<double> volume;
    std::optional<bool> shuffle;
    Capabilities capabilities; ///< those that do not depend on other interfaces

    bool operator==(const PlayerFacts&) const = default;
};

/// Puts right what `org.mpris.MediaPlayer2.Player` says: the one place where players' quirks in spelling
/// and types are dealt with. `properties` are plain values, by name.
PlayerFacts normalise(const QVariantMap& properties);

/// The same of metadata alone, as a track list gives them.
Metadata normaliseMetadata(const QVariantMap& metadata);

/// Those of `properties` that have a type which makes sense for them.
QVariantMap believable(const QVariantMap& properties);

} // namespace tarnwick::players
