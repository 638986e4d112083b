#include "players/demo/DemoLibrary.h"

#include "players/demo/DemoAlbum.h"

#include <algorithm>

namespace tarnwick::players {

namespace {

QString utf8(const char* text) { return QString::fromUtf8(text); }

/// A file name without what a file system would not take.
QString fileName(QString text) { return text.replace(u'/', u'-').left(80); }

Track makeTrack(const DemoAlbum& album, std::size_t disc, std::size_t number, const QString& folder) {
    const DemoSong& song = album.discs[disc][number];
    Track track;
    track.name = utf8(song.title);
    track.artist = utf8(song.artist != nullptr ? song.artist : album.artist);
    track.album = utf8(album.title);
    track.genre = utf8(album.genre);
    track.grouping = utf8(album.grouping);
    track.comment = utf8(song.comment != nullptr ? song.comment : album.comment);
    track.kind = utf8(album.encoding.kind);
    track.year = album.year;
    track.trackNumber = static_cast<int>(number) + 1;
    track.discNumber = static_cast<int>(disc) + 1;
    track.discCount = static_cast<int>(album.discs.size());
    track.compilation = album.compilation;
    track.duration = song.seconds;
    track.bitRate = album.encoding.bitRate;
    track.sampleRate = album.encoding.sampleRate;
    track.size = qint64{song.seconds} * track.bitRate * 1000 / 8 + 61440;
    track.path = QStringLiteral("%1/%2-%3 %4.%5")
                     .arg(folder)
                     .arg(track.discNumber)
                     .arg(track.trackNumber, 2, 10, QLatin1Char('0'))
                     .arg(fileName(track.name), QLatin1String(album.encoding.suffix));
    return track;
}

/// Tracks by the dozen, for measurements.
void addGenerated(std::vector<Track>& tracks, int count) {
    constexpr int perAlbum = 12;
    for (int i = 0; i < count; ++i) {
        const int album = i / perAlbum;
        Track track;
        track.name = QStringLiteral("Brano %1").arg(i);
        track.artist = QStringLiteral("Artista %1").arg(album % 997);
        track.album = QStringLiteral("Album %1").arg(album);
        track.kind = QStringLiteral("FLAC audio file");
        track.trackNumber = i % perAlbum + 1;
        track.discNumber = 1;
        track.discCount = 1;
        track.duration = 180 + i % 240;
        tracks.push_back(std::move(track));
    }
}

struct SceneStart {
    const char* album;
    int number; ///< among the album's tracks, from 0
    double position;
};

SceneStart startOf(DemoScene scene) {
    switch (scene) {
    case DemoScene::TwoDiscs:
        return {"Lontano", 1, 74};
    case DemoScene::Cassette:
        return {"Nastro del sabato", 1, 52};
    case DemoScene::NoCover:
        return {"Sin título (cinta de garaje)", 0, 41};
    case DemoScene::LongTexts:
        return {"Se il vento gira prima di sera, chi resta sul molo conta le barche e chi parte non conta "
                "più niente",
                0, 187};
    default:
        return {"Lontano", 9, 161};
    }
}

} // namespace

DemoLibrary makeDemoLibrary(DemoScene scene, int additionalTracks, const QString& cassetteFolder) {
    DemoLibrary result;
    std::vector<Track> tracks;
    for (const DemoAlbum& album : makeDemoAlbums()) {
        result.covers.insert(utf8(album.title), album.cover);
        const QString folder = album.cover == DemoCover::Stripes && !cassetteFolder.isEmpty()
                                   ? cassetteFolder
                                   : QStringLiteral("/Tarnwick/%1/%2")
                                         .arg(fileName(utf8(album.artist)), fileName(utf8(album.title)));
        for (std::size_t disc = 0; disc < album.discs.size(); ++disc) {
            for (std::size_t number = 0; number < album.discs[disc].size(); ++number)
                tracks.push_back(makeTrack(album, disc, number, folder));
        }
    }
    const int realTracks = static_cast<int>(tracks.size());
    addGenerated(tracks, additionalTracks);
    for (std::size_t i = 0; i < tracks.size(); ++i)
        tracks[i].id = QString::number(i);
    result.library = std::make_shared<const Library>(std::move(tracks));
    result.playlists = makeDemoPlaylists(*result.library, realTracks, scene);

    const SceneStart start = startOf(scene);
    result.sceneTrack = result.library->ofAlbum(utf8(start.album))[static_cast<std::size_t>(start.number)];
    result.scenePosition = start.position;
    for (std::size_t i = 0; i < result.playlists.size() && result.scenePlaylist < 0; ++i) {
        const std::vector<int>& numbers = result.playlists[i].tracks;
        if (std::find(numbers.begin(), numbers.end(), result.sceneTrack) != numbers.end())
            result.scenePlaylist = static_cast<int>(i);
    }
    return result;
}

} // namespace tarnwick::players
