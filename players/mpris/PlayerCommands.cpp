#include "players/mpris/PlayerCommands.h"

#include "players/FileName.h"

#include <QDBusObjectPath>
#include <QDir>
#include <QSaveFile>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <tuple>

namespace tarnwick::players {

namespace {

constexpr int playlistPatience = 500; // ms in which a playlist should have begun
constexpr int titlePatience = 2000;   // ms in which the first title of a playlist of ours should play
constexpr int titleLooks = 20;        // in that time

QString methodOf(Player::Command command) {
    switch (command) {
    case Player::Command::Play:
        return QStringLiteral("Play");
    case Player::Command::Pause:
        return QStringLiteral("Pause");
    case Player::Command::PlayPause:
        return QStringLiteral("PlayPause");
    case Player::Command::Stop:
        return QStringLiteral("Stop");
    case Player::Command::NextTrack:
        return QStringLiteral("Next");
    case Player::Command::PreviousTrack:
        return QStringLiteral("Previous");
    }
    return {};
}

/// Whether `url` means the file at `path`, however it is escaped.
bool samePath(const QString& url, const QString& path) {
    return nameFromBytes(QByteArray::fromPercentEncoding(url.toUtf8())) == QLatin1String("file://") + path ||
           QUrl(url).toLocalFile() == path || url == path || url == QLatin1String("file://") + path;
}

QString addressOf(const QString& path) {
    return QString::fromLatin1("file://" + bytesOfName(path).toPercentEncoding("/"));
}

void openFile(PlayerLink& link, const QString& path, const PlayerLink::Done& done) {
    link.call(QStringLiteral("OpenUri"), {addressOf(path)},
              [&link, done](const PlayerLink::Failure& failure) {
                  if (failure)
                      link.refusedFile();
                  done(failure);
              });
}

/// The path of a playlist of what is asked for; empty when there is nothing to list, or nowhere to leave it.
QString writePlaylist(const TitleRequest& request) {
    if (request.onwards.size() < 2 || request.cacheFolder.isEmpty() || !QDir().mkpath(request.cacheFolder))
        return {};
    QByteArray lines = "#EXTM3U\n";
    for (const Track& track : request.onwards)
        lines += addressOf(track.path).toLatin1() + '\n';
    QSaveFile file(request.cacheFolder + QStringLiteral("/album.m3u8"));
    if (!file.open(QIODevice::WriteOnly) || file.write(lines) != lines.size() || !file.commit())
        return {};
    return file.fileName();
}

/// Waits until the player plays the file at `path`, which was the first of the playlist that it has opened.
void awaitTitle(PlayerLink& link, const QString& path, int looks, const PlayerLink::Done& done) {
    if (samePath(link.belief().metadata.url, path)) {
        done(std::nullopt);
    } else if (looks == 0) {
        link.refusedPlaylist();
        openFile(link, path, done);
    } else {
        QTimer::singleShot(titlePatience / titleLooks, &link,
                           [&link, path, looks, done] { awaitTitle(link, path, looks - 1, done); });
    }
}

void openPlaylist(PlayerLink& link, const QString& list, const QString& path, const PlayerLink::Done& done) {
    link.call(QStringLiteral("OpenUri"), {addressOf(list)},
              [&link, path, done](const PlayerLink::Failure& failure) {
                  awaitTitle(link, path, failure ? 0 : titleLooks, done);
              });
}

/// Some start a playlist only when they are stopped, and play on otherwise.
void activate(PlayerLink& link, const QString& playlist, bool isSecondTry,
              const dispatch::Dispatcher& dispatcher, const PlayerLink::Done& done) {
    const int serial = link.belief().trackSerial;
    const bool wasPlaying = link.belief().state == PlayerState::Playing;
    link.call(
        QStringLiteral("ActivatePlaylist"), {QVariant::fromValue(QDBusObjectPath(playlist))},
        [&link, &dispatcher, playlist, serial, wasPlaying, isSecondTry,
         done](const PlayerLink::Failure& failure) {
            link.playlists().refresh();
            if (failure || isSecondTry || !wasPlaying) {
                done(failure);
                return;
            }
            QTimer::singleShot(playlistPatience, &link, [&link, &dispatcher, playlist, serial, done] {
                const bool playsOn =
                    link.belief().trackSerial == serial && link.belief().state == PlayerState::Playing &&
                    link.belief().position.valueAt(dispatcher.now()) > playlistPatience / 250.0;
                if (!playsOn) {
                    done(std::nullopt);
                    return;
                }
                link.call(QStringLiteral("Stop"), {},
                          [&link, &dispatcher, playlist, done](const PlayerLink::Failure&) {
                              activate(link, playlist, true, dispatcher, done);
                          });
            });
        },
        QStringLiteral("Playlists"));
}

} // namespace

void sendCommand(PlayerLink& link, Player::Command command, dispatch::Instant now,
                 const PlayerLink::Done& done) {
    // Whatever else is asked for, a stop that comes with it is a gap between two tracks.
    if (command == Player::Command::Pause || command == Player::Command::PlayPause ||
        command == Player::Command::Stop)
        link.model().stateWasAskedFor(now);
    link.call(methodOf(command), {}, done);
}

std::vector<Track> albumFrom(const Library& library, const Track& track) {
    std::vector<Track> album;
    for (const int number : library.ofAlbum(track.album)) {
        const Track& each = library.tracks()[static_cast<std::size_t>(number)];
        if (!each.path.isEmpty() && (track.compilation || each.artist == track.artist))
            album.push_back(each);
    }
    std::stable_sort(album.begin(), album.end(), [](const Track& a, const Track& b) {
        return std::tie(a.discNumber, a.trackNumber) < std::tie(b.discNumber, b.trackNumber);
    });
    const auto first =
        std::find_if(album.begin(), album.end(), [&](const Track& each) { return each.path == track.path; });
    album.erase(album.begin(), first);
    return album;
}

void playTrack(PlayerLink& link, const TitleRequest& request, const PlayerLink::Done& done) {
    // Some that are paused go to the title and stay paused.
    const bool wasPaused = link.belief().state == PlayerState::Paused;
    const PlayerLink::Done begin = [&link, wasPaused, done](const PlayerLink::Failure& failure) {
        if (failure || !wasPaused)
            done(failure);
        else
            link.call(QStringLiteral("Play"), {}, done);
    };
    link.trackList().refresh([&link, request, done, begin] {
        const Track& track = request.track;
        for (const Metadata& entry : link.trackList().entries()) {
            const bool isIt =
                track.path.isEmpty() ? entry.track.id == track.id : samePath(entry.url, track.path);
            if (!isIt || !entry.track.id.startsWith(u'/'))
                continue;
            link.call(QStringLiteral("GoTo"), {QVariant::fromValue(QDBusObjectPath(entry.track.id))}, begin,
                      QStringLiteral("TrackList"));
            return;
        }
        const QString list = link.canOpenPlaylists() ? writePlaylist(request) : QString();
        if (track.path.isEmpty())
            done(QStringLiteral("%1 cannot play that title").arg(link.identity()));
        else if (list.isEmpty())
            openFile(link, track.path, begin);
        else
            openPlaylist(link, list, track.path, begin);
    });
}

void playPlaylist(PlayerLink& link, const Playlist& playlist, const dispatch::Dispatcher& dispatcher,
                  const PlayerLink::Done& done) {
    activate(link, playlist.id, false, dispatcher, done);
}

} // namespace tarnwick::players
