#include "platform/musicapp/mpris/Session.h"

#include "platform/musicapp/mpris/PlayerCommands.h"

#include <algorithm>
#include <atomic>

namespace tarnwick::musicapp {

namespace {

/// Connections are known by name all over the process.
QString uniqueConnectionName() {
    static std::atomic<int> last = 0;
    return QStringLiteral("tarnwick-players-%1").arg(++last);
}

QDBusConnection connection(const QString& address, const QString& name) {
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

/// Empty when there is none; what a stopped player shows was its last, and one that hangs has no echo.
QString songOf(const PlayerLink& link) {
    if (link.belief().state == PlayerState::Stopped || link.isHanging())
        return {};
    const Track& track = link.belief().metadata.track;
    return track.name.isEmpty() ? QString() : track.name + u'\n' + track.artist;
}

} // namespace

Session::Session(const MprisMusic::Options& options, BusThread& thread, dispatch::Dispatcher& dispatcher,
                 images::ImageStore& images, SessionListener& listener)
    : m_options(options), m_dispatcher(dispatcher), m_listener(listener),
      m_connectionName(uniqueConnectionName()), m_bus(connection(options.busAddress, m_connectionName)),
      m_track(options.cacheFolder, thread, dispatcher, images, [this] { publish(); }),
      m_launcher(options.stateFile, options.busAddress),
      m_memory(dispatcher.globalQueue(dispatch::QualityOfService::Background)) {
    m_choice.setSingleShot(true);
    connect(&m_choice, &QTimer::timeout, this, &Session::playersChanged);
    m_players.emplace(m_bus, dispatcher,
                      PlayerRoster::Handlers{
                          .changed =
                              [this] {
                                  beliefChanged();
                                  if (!m_choice.isActive())
                                      m_choice.start(0);
                              },
                          .leaves = [this](const PlayerLink& link) { playerLeaves(link); },
                          .trackListChanged = [this](PlayerLink& link) { m_track.trackListChanged(link); },
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

void Session::playerLeaves(const PlayerLink& link) {
    m_lastPlayed.remove(link.owner());
    if (&link == m_followed)
        follow(nullptr);
}

void Session::playersChanged() {
    std::vector<Candidate> candidates;
    bool allAnswered = m_players->isComplete();
    bool anyPlays = false;
    for (const auto& link : m_players->links()) {
        if (!m_options.player.isEmpty() && link->isReady() && !link->isNamed(m_options.player))
            continue;
        allAnswered = allAnswered && link->hasAnswered();
        if (!link->isReady())
            continue;
        candidates.push_back(candidateFor(*link));
        anyPlays = anyPlays || candidates.back().isPlaying;
    }
    // At the start, one that plays need not wait for the others.
    if (m_followed == nullptr && !allAnswered && !anyPlays)
        return;
    doubtFollowed(candidates);
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

Candidate Session::candidateFor(const PlayerLink& link) {
    const bool isPlaying = link.isPlaying();
    if (isPlaying)
        m_lastPlayed[link.owner()] = m_dispatcher.now();
    const auto lastPlayed = m_lastPlayed.constFind(link.owner());
    return {link.owner(), isPlaying,
            lastPlayed == m_lastPlayed.constEnd() ? std::nullopt : std::optional(*lastPlayed),
            link.belief().stateSince, songOf(link)};
}

/// When another player begins to play, whoever is followed has to show that it does not hang: it may not
/// have been asked anything for long.
void Session::doubtFollowed(const std::vector<Candidate>& candidates) {
    if (m_followed == nullptr)
        return;
    dispatch::Instant rival = m_lastRival;
    for (const Candidate& candidate : candidates) {
        if (candidate.isPlaying && candidate.owner != m_followed->owner())
            rival = std::max(rival, candidate.since);
    }
    if (std::exchange(m_lastRival, rival) != rival && m_followed->isPlaying())
        positionWasRead();
}

void Session::follow(PlayerLink* link) {
    m_followed = link;
    m_track.follow(link);
    if (link == nullptr)
        return;
    link->playlists().refresh();
    m_memory.run([this, entry = link->desktopEntry()] { m_launcher.remember(entry); });
}

/// Lets the outside see what is believed about the followed player, once what belongs to it is there.
void Session::beliefChanged() {
    if (m_followed == nullptr)
        return;
    m_track.beliefChanged();
    if (!m_track.isAwaited())
        publish();
}

/// The album as far as it is known, the current track in any case.
std::shared_ptr<const Library> Session::libraryAround(const Track& current) const {
    if (current.name.isEmpty()) // a station that sends none: nothing that could stand in a list
        return Library::empty();
    const auto& album = m_track.album();
    for (const int number : album->ofAlbum(current.album)) {
        const Track& track = album->tracks()[static_cast<std::size_t>(number)];
        if (track.name == current.name && track.path == current.path)
            return album;
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
    m_listener.publish(std::move(next), !m_track.isLoading() && arePlaylistsKnown);
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
    snapshot.current = m_track.described();
    snapshot.currentPlaylist = m_followed->playlists().active();
    snapshot.artwork = m_track.artwork();
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
    if (PlayerLink* link = followedOrFail())
        sendCommand(*link, command, m_dispatcher.now(), done());
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

void Session::play(const Track& track) {
    if (PlayerLink* link = followedOrFail())
        playTrack(*link, track, done());
}

void Session::play(const Playlist& playlist) {
    if (PlayerLink* link = followedOrFail())
        playPlaylist(*link, playlist, m_dispatcher, done());
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
