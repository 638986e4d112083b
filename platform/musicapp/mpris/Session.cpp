#include "platform/musicapp/mpris/Session.h"

#include "platform/musicapp/mpris/PlayerChooser.h"

#include <QDBusObjectPath>
#include <QUrl>

#include <algorithm>
#include <atomic>

namespace tarnwick::musicapp {

namespace {

constexpr int coverPatience = 150;    // ms that a new album waits for its cover
constexpr int playlistPatience = 500; // ms in which a playlist should have begun

/// Connections are known by name all over the process.
QString uniqueConnectionName() {
    static std::atomic<int> last = 0;
    return QStringLiteral("tarnwick-players-%1").arg(++last);
}

QDBusConnection connection(const QString& address, const QString& name) {
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

/// Whether `url` means the file at `path`, however it is escaped.
bool samePath(const QString& url, const QString& path) {
    return QUrl(url).toLocalFile() == path || url == path || url == QLatin1String("file://") + path;
}

QString songOf(const Belief& belief) {
    const Track& track = belief.metadata.track;
    return track.name.isEmpty() ? QString() : track.name + u'\n' + track.artist;
}

} // namespace

Session::Session(const MprisMusic::Options& options, BusThread& thread, dispatch::Dispatcher& dispatcher,
                 images::ImageStore& images, SessionListener& listener)
    : m_options(options), m_dispatcher(dispatcher), m_listener(listener),
      m_connectionName(uniqueConnectionName()), m_bus(connection(options.busAddress, m_connectionName)),
      m_loader(options.cacheFolder, thread, dispatcher, images),
      m_launcher(options.stateFile, options.busAddress),
      m_memory(dispatcher.globalQueue(dispatch::QualityOfService::Background)) {
    m_choice.setSingleShot(true);
    connect(&m_choice, &QTimer::timeout, this, &Session::playersChanged);
    m_patience.setSingleShot(true);
    m_patience.setTimerType(Qt::PreciseTimer);
    connect(&m_patience, &QTimer::timeout, this, &Session::publish);
    m_players.emplace(m_bus, dispatcher,
                      PlayerRoster::Handlers{
                          .changed =
                              [this] {
                                  beliefChanged();
                                  if (!m_choice.isActive())
                                      m_choice.start(0);
                              },
                          .leaves = [this](const PlayerLink& link) { playerLeaves(link); },
                          .trackListChanged = [this](PlayerLink& link) { trackListChanged(link); },
                          .playlistsChanged =
                              [this](const PlayerLink& link) {
                                  if (&link == m_followed)
                                      playlistsWereRead();
                              },
                      });
    if (!m_bus.isConnected())
        publish();
}

Session::~Session() {
    m_players.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void Session::trackListChanged(PlayerLink& link) {
    link.trackList().invalidate();
    if (&link == m_followed && !m_details.file && m_trackSerial > 0)
        albumFromTrackList();
}

void Session::playerLeaves(const PlayerLink& link) {
    m_lastPlayed.remove(link.owner());
    if (&link == m_followed)
        follow(nullptr);
}

void Session::playersChanged() {
    const auto now = m_dispatcher.now();
    std::vector<Candidate> candidates;
    bool allAnswered = m_players->isComplete();
    bool anyPlays = false;
    for (const auto& known : m_players->links()) {
        const PlayerLink& link = *known;
        if (!m_options.player.isEmpty() && link.isReady() && !link.isNamed(m_options.player))
            continue;
        allAnswered = allAnswered && link.hasAnswered();
        if (!link.isReady())
            continue;
        const bool isPlaying = link.belief().state == PlayerState::Playing;
        anyPlays = anyPlays || isPlaying;
        if (isPlaying)
            m_lastPlayed[link.owner()] = now;
        const auto lastPlayed = m_lastPlayed.constFind(link.owner());
        candidates.push_back(
            {link.owner(), isPlaying,
             lastPlayed == m_lastPlayed.constEnd() ? std::nullopt : std::optional(*lastPlayed),
             songOf(link.belief())});
    }
    // At the start, one that plays need not wait for the others.
    if (m_followed == nullptr && !allAnswered && !anyPlays)
        return;
    PlayerLink* chosen =
        m_players->linkOf(choosePlayer(candidates, m_followed != nullptr ? m_followed->owner() : QString()));
    if (chosen == nullptr) {
        follow(nullptr);
        publish();
    } else if (chosen != m_followed) {
        follow(chosen);
        beliefChanged();
    }
}

void Session::follow(PlayerLink* link) {
    m_followed = link;
    m_trackSerial = 0;
    m_isLoading = false;
    m_isLoadingAlbum = false;
    m_loader.cancel();
    m_details = {};
    m_patience.stop();
    if (link == nullptr)
        return;
    link->playlists().refresh();
    m_memory.run([this, entry = link->desktopEntry()] { m_launcher.remember(entry); });
}

/// Lets the outside see what is believed about the followed player, once what belongs to it is there.
void Session::beliefChanged() {
    if (m_followed == nullptr)
        return;
    const Belief& belief = m_followed->belief();
    if (belief.trackSerial != m_trackSerial || belief.metadata.url != m_detailed.url ||
        belief.metadata.artUrl != m_detailed.artUrl)
        loadDetails();
    else
        m_detailed = belief.metadata;
    if (!m_patience.isActive())
        publish();
}

void Session::loadDetails() {
    const Belief& belief = m_followed->belief();
    const bool isNewTrack = belief.trackSerial != m_trackSerial;
    m_trackSerial = belief.trackSerial;
    const Metadata before = std::exchange(m_detailed, belief.metadata);
    if (isNewTrack) {
        m_details.file.reset();
        m_details.fileDate = {};
        if (!isSameAlbum(before, m_detailed))
            m_details.artwork.reset();
        if (m_details.artwork && !namesFile(m_detailed.url))
            m_patience.stop();
        else
            m_patience.start(coverPatience); // for the cover, and for what the file says
        m_followed->playlists().refresh();
    }
    m_isLoading = true;
    m_isLoadingAlbum = true;
    m_loader.load(belief.metadata, [this](const TrackDetails& details, bool isComplete) {
        detailsLoaded(details, isComplete);
    });
}

void Session::detailsLoaded(const TrackDetails& details, bool isComplete) {
    const bool isFirst = m_isLoading && m_isLoadingAlbum;
    m_isLoading = !isComplete;
    const auto before = m_details.artwork;
    m_details = details;
    // Within a track, and within an album, a cover that is there stays.
    if (!m_details.artwork)
        m_details.artwork = before;
    if (isComplete || details.artwork)
        m_patience.stop();
    if (isFirst)
        loadAlbum();
    if (!m_patience.isActive())
        publish();
}

void Session::loadAlbum() {
    const Belief& belief = m_followed->belief();
    if (!m_details.file) {
        albumFromTrackList();
        return;
    }
    const Track current = describe(belief.metadata, m_details, QDate::currentDate());
    m_loader.loadAlbum(current, m_details.file,
                       [this](const std::shared_ptr<const Library>& album) { albumLoaded(album); });
}

/// The tracks of the current album in the player's own list, where no files can be looked at.
void Session::albumFromTrackList() {
    const int serial = m_trackSerial;
    PlayerLink* link = m_followed;
    link->trackList().refresh([this, link, serial] {
        if (link != m_followed || serial != m_trackSerial)
            return;
        const Track& current = link->belief().metadata.track;
        std::vector<Track> tracks;
        for (const Metadata& entry : link->trackList().entries()) {
            if (!current.album.isEmpty() && entry.track.album == current.album)
                tracks.push_back(entry.track);
        }
        albumLoaded(std::make_shared<const Library>(std::move(tracks)));
        if (link->trackList().isOverdue())
            link->whenItAnswers([this, link] { trackListChanged(*link); });
    });
}

void Session::albumLoaded(const std::shared_ptr<const Library>& album) {
    m_isLoadingAlbum = false;
    if (album->tracks() != m_album->tracks())
        m_album = album;
    if (!m_patience.isActive())
        publish();
}

/// The album as far as it is known, the current track in any case.
std::shared_ptr<const Library> Session::libraryAround(const Track& current) const {
    for (const int number : m_album->ofAlbum(current.album)) {
        const Track& track = m_album->tracks()[static_cast<std::size_t>(number)];
        if (track.name == current.name && track.path == current.path)
            return m_album;
    }
    const auto& shown = m_shown.library->tracks();
    if (shown.size() == 1 && saysTheSame(shown.front(), current))
        return m_shown.library;
    return std::make_shared<const Library>(std::vector{current});
}

void Session::publish() {
    Snapshot next = m_followed != nullptr ? makeSnapshot() : Snapshot();
    m_shown = next;
    const bool arePlaylistsKnown = m_followed == nullptr || m_followed->playlists().isKnown();
    m_listener.publish(std::move(next), !m_isLoading && !m_isLoadingAlbum && arePlaylistsKnown);
}

Snapshot Session::makeSnapshot() const {
    const Belief& belief = m_followed->belief();
    Snapshot snapshot;
    snapshot.running = true;
    snapshot.playerName = m_followed->identity();
    snapshot.state = belief.state;
    snapshot.volume = belief.volume;
    snapshot.shuffle = belief.shuffle;
    snapshot.capabilities = belief.capabilities;
    snapshot.capabilities.canOpenTitle =
        m_followed->canOpenFiles() || !m_followed->trackList().entries().empty();
    snapshot.playlists = m_followed->playlists().playlists();
    snapshot.capabilities.hasPlaylists = !snapshot.playlists.empty();
    if (belief.state == PlayerState::Stopped)
        return snapshot;
    snapshot.current = describe(belief.metadata, m_details, QDate::currentDate());
    snapshot.currentPlaylist = m_followed->playlists().active();
    snapshot.artwork = m_details.artwork;
    snapshot.position = belief.position;
    if (!snapshot.position.limit && snapshot.current->duration > 0)
        snapshot.position.limit = snapshot.current->duration;
    snapshot.library = libraryAround(*snapshot.current);
    return snapshot;
}

/// What the listener is told when a command ends, if only because its player has gone.
PlayerLink::Done Session::done() {
    struct Ending {
        explicit Ending(SessionListener& told) : listener(told) {}
        Ending(const Ending&) = delete;
        Ending& operator=(const Ending&) = delete;
        ~Ending() {
            if (!isTold)
                listener.finished(QStringLiteral("the player has gone"));
        }
        SessionListener& listener;
        bool isTold = false;
    };
    return [ending = std::make_shared<Ending>(m_listener)](const PlayerLink::Failure& failure) {
        if (!std::exchange(ending->isTold, true))
            ending->listener.finished(failure);
    };
}

/// The followed player; without one the command has failed.
PlayerLink* Session::followedOrFail() {
    if (m_followed == nullptr)
        done()(QStringLiteral("there is no player"));
    return m_followed;
}

void Session::command(Player::Command command) {
    const auto methodOf = [](Player::Command wanted) {
        switch (wanted) {
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
        return QString();
    };
    PlayerLink* link = followedOrFail();
    if (link == nullptr)
        return;
    // Whatever else is asked for, a stop that comes with it is a gap between two tracks.
    if (command == Player::Command::Pause || command == Player::Command::PlayPause ||
        command == Player::Command::Stop)
        link->model().stateWasAskedFor(m_dispatcher.now());
    link->call(methodOf(command), {}, done());
}

void Session::setVolume(double volume) {
    if (PlayerLink* link = followedOrFail()) {
        link->setVolume(volume, done());
        beliefChanged();
    }
}

void Session::setShuffle(bool shuffle) {
    if (PlayerLink* link = followedOrFail()) {
        link->setShuffle(shuffle, done());
        beliefChanged();
    }
}

void Session::setPosition(double seconds) {
    if (PlayerLink* link = followedOrFail())
        link->setPosition(seconds, done());
}

/// Goes to the player's own entry of that track where it lists one, else lets it open the file.
void Session::play(const Track& track) {
    PlayerLink* link = followedOrFail();
    if (link == nullptr)
        return;
    link->trackList().refresh([link, track, ended = done()] {
        for (const Metadata& entry : link->trackList().entries()) {
            const bool isIt =
                track.path.isEmpty() ? entry.track.id == track.id : samePath(entry.url, track.path);
            if (!isIt || !entry.track.id.startsWith(u'/'))
                continue;
            link->call(QStringLiteral("GoTo"), {QVariant::fromValue(QDBusObjectPath(entry.track.id))}, ended,
                       QStringLiteral("TrackList"));
            return;
        }
        if (track.path.isEmpty())
            ended(QStringLiteral("%1 cannot play that title").arg(link->identity()));
        else
            link->call(QStringLiteral("OpenUri"),
                       {QString::fromLatin1(QUrl::fromLocalFile(track.path).toEncoded())}, ended);
    });
}

void Session::play(const Playlist& playlist) {
    if (PlayerLink* link = followedOrFail())
        activate(*link, playlist.id, false, done());
}

/// Some start a playlist only when they are stopped, and play on otherwise.
void Session::activate(PlayerLink& link, const QString& playlist, bool isSecondTry,
                       const PlayerLink::Done& done) {
    const int serial = link.belief().trackSerial;
    const bool wasPlaying = link.belief().state == PlayerState::Playing;
    link.call(
        QStringLiteral("ActivatePlaylist"), {QVariant::fromValue(QDBusObjectPath(playlist))},
        [this, &link, playlist, serial, wasPlaying, isSecondTry, done](const PlayerLink::Failure& failure) {
            link.playlists().refresh();
            if (failure || isSecondTry || !wasPlaying) {
                done(failure);
                return;
            }
            QTimer::singleShot(playlistPatience, &link, [this, &link, playlist, serial, done] {
                const bool playsOn =
                    link.belief().trackSerial == serial && link.belief().state == PlayerState::Playing &&
                    link.belief().position.valueAt(m_dispatcher.now()) > playlistPatience / 250.0;
                if (!playsOn) {
                    done(std::nullopt);
                    return;
                }
                link.call(QStringLiteral("Stop"), {},
                          [this, &link, playlist, done](const PlayerLink::Failure&) {
                              activate(link, playlist, true, done);
                          });
            });
        },
        QStringLiteral("Playlists"));
}

void Session::playlistsWereRead() {
    if (m_followed != nullptr)
        m_followed->playlists().refresh();
}

void Session::positionWasRead() {
    if (m_followed == nullptr)
        return;
    m_followed->model().positionWasAskedFor(m_dispatcher.now());
    m_followed->attend();
}

} // namespace tarnwick::musicapp
