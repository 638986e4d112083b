#include "platform/musicapp/mpris/PlayerCommands.h"

#include "platform/musicapp/FileName.h"

#include <QDBusObjectPath>
#include <QTimer>
#include <QUrl>

namespace tarnwick::musicapp {

namespace {

constexpr int playlistPatience = 500; // ms in which a playlist should have begun

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

void playTrack(PlayerLink& link, const Track& track, const PlayerLink::Done& done) {
    // Some that are paused go to the title and stay paused.
    const bool wasPaused = link.belief().state == PlayerState::Paused;
    const PlayerLink::Done begin = [&link, wasPaused, done](const PlayerLink::Failure& failure) {
        if (failure || !wasPaused)
            done(failure);
        else
            link.call(QStringLiteral("Play"), {}, done);
    };
    link.trackList().refresh([&link, track, done, begin] {
        for (const Metadata& entry : link.trackList().entries()) {
            const bool isIt =
                track.path.isEmpty() ? entry.track.id == track.id : samePath(entry.url, track.path);
            if (!isIt || !entry.track.id.startsWith(u'/'))
                continue;
            link.call(QStringLiteral("GoTo"), {QVariant::fromValue(QDBusObjectPath(entry.track.id))}, begin,
                      QStringLiteral("TrackList"));
            return;
        }
        if (track.path.isEmpty())
            done(QStringLiteral("%1 cannot play that title").arg(link.identity()));
        else
            link.call(QStringLiteral("OpenUri"),
                      {QString::fromLatin1("file://" + bytesOfName(track.path).toPercentEncoding("/"))},
                      begin);
    });
}

void playPlaylist(PlayerLink& link, const Playlist& playlist, const dispatch::Dispatcher& dispatcher,
                  const PlayerLink::Done& done) {
    activate(link, playlist.id, false, dispatcher, done);
}

} // namespace tarnwick::musicapp
