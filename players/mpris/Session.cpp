#include "players/mpris/Session.h"

#include "players/mpris/BusValue.h"
#include "players/mpris/PlayerCommands.h"

#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <atomic>

namespace tarnwick::players {

namespace {

constexpr int displayPatience = 500; // ms for a display to say whom it follows
constexpr int firstPatience = 300;   // ms that a player which plays waits for others, at the start
constexpr auto searchTime = std::chrono::milliseconds(500); // in which those that are there are found

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
      m_launcher(options.stateFile, options.busAddress), m_begin(dispatcher.now()),
      m_memory(dispatcher.globalQueue(dispatch::QualityOfService::Background)) {
    m_choice.setSingleShot(true);
    connect(&m_choice, &QTimer::timeout, this, &Session::playersChanged);
    m_firstChoice.setSingleShot(true);
    connect(&m_firstChoice, &QTimer::timeout, this, [this] {
        m_isFirstChoiceDue = true;
        playersChanged();
    });
    m_remembered = m_launcher.remembered();
    askDisplay();
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

/// A command is about the player that is seen.
void Session::askDisplay() {
    if (m_options.display.isEmpty() || !m_options.player.isEmpty() || !m_bus.isConnected())
        return;
    m_isDisplayAwaited = true;
    QString path = u'/' + m_options.display;
    QDBusMessage question = QDBusMessage::createMethodCall(m_options.display, path.replace(u'.', u'/'),
                                                           QStringLiteral("org.freedesktop.DBus.Properties"),
                                                           QStringLiteral("Get"));
    question.setArguments({m_options.display, QStringLiteral("Player")});
    question.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question, displayPatience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        m_isDisplayAwaited = false;
        const QDBusMessage reply = finished->reply();
        if (reply.type() == QDBusMessage::ReplyMessage)
            m_displayed = textOf(plainValue(reply.arguments().value(0)));
        playersChanged();
    });
}

Session::~Session() {
    m_players.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void Session::playerLeaves(const PlayerLink& link) {
    m_lastPlayed.remove(link.owner());
    if (link.owner() == m_displayed)
        m_displayed.clear();
    if (&link == m_followed)
        follow(nullptr);
}

void Session::playersChanged() {
    std::vector<Candidate> candidates;
    for (const auto& link : m_players->links())
        if (link->isReady() && (m_options.player.isEmpty() || link->isNamed(m_options.player)))
            candidates.push_back(candidateFor(*link));
    if (!mayChoose(candidates))
        return;
    doubtFollowed(candidates);
    PlayerLink* chosen = m_displayed.isEmpty() ? nullptr : m_players->linkOf(m_displayed);
    if (chosen == nullptr || !chosen->isReady())
        chosen = m_players->linkOf(
            choosePlayer(candidates, m_followed != nullptr ? m_followed->owner() : QString()));
    if (chosen == nullptr) {
        follow(nullptr);
        publish();
    } else if (chosen != m_followed) {
        follow(chosen);
        beliefChanged();
    }
}

/// Whether it is known who is there. At the start, one that plays waits for the others no longer than a
/// moment.
bool Session::mayChoose(const std::vector<Candidate>& candidates) {
    if (m_followed != nullptr)
        return true;
    if (m_isDisplayAwaited)
        return false;
    const auto& links = m_players->links();
    const bool allAnswered =
        m_players->isComplete() && std::all_of(links.begin(), links.end(), [&](const auto& link) {
            const bool isMeant = m_options.player.isEmpty() || link->isNamed(m_options.player);
            return link->hasAnswered() || (link->isReady() && !isMeant);
        });
    if (allAnswered)
        return true;
    if (!m_displayed.isEmpty())
        return std::any_of(candidates.begin(), candidates.end(),
                           [&](const Candidate& candidate) { return candidate.owner == m_displayed; });
    const bool anyPlays = std::any_of(candidates.begin(), candidates.end(), [](const Candidate& candidate) {
        return candidate.state == PlayerState::Playing;
    });
    if (!anyPlays)
        return false;
    if (!m_isFirstChoiceDue && !m_firstChoice.isActive())
        m_firstChoice.start(firstPatience);
    return m_isFirstChoiceDue;
}

Candidate Session::candidateFor(const PlayerLink& link) {
    if (link.isPlaying())
        m_lastPlayed[link.owner()] = m_dispatcher.now();
    const auto lastPlayed = m_lastPlayed.constFind(link.owner());
    const Belief& belief = link.belief();
    return {.owner = link.owner(),
            .name = link.busName(),
            .state = link.isHanging() ? PlayerState::Stopped : belief.state,
            .lastPlayed = lastPlayed == m_lastPlayed.constEnd() ? std::nullopt : std::optional(*lastPlayed),
            .since = belief.stateSince,
            .wasFound = belief.stateSince < m_begin + searchTime,
            .song = songOf(link),
            .isRemembered = !m_remembered.isEmpty() && link.desktopEntry() == m_remembered};
}

/// When another player begins to play, whoever is followed has to show that it does not hang: it may not
/// have been asked anything for long.
void Session::doubtFollowed(const std::vector<Candidate>& candidates) {
    if (m_followed == nullptr)
        return;
    dispatch::Instant rival = m_lastRival;
    for (const Candidate& candidate : candidates) {
        if (candidate.state == PlayerState::Playing && candidate.owner != m_followed->owner())
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
    if (m_options.remembers || link->isPlaying())
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
    for (const auto& link : m_players->links())
        next.playerNames.append(link->name());
    next.playerNames.removeDuplicates();
    next.playerNames.sort();
    m_shown = next;
    const bool arePlaylistsKnown = m_followed == nullptr || m_followed->playlists().isKnown();
    m_listener.publish(std::move(next), !m_track.isLoading() && arePlaylistsKnown);
}

Snapshot Session::makeSnapshot() const {
    const Belief& belief = m_followed->belief();
    Snapshot snapshot;
    snapshot.running = true;
    snapshot.playerName = m_followed->identity();
    snapshot.playerAddress = m_followed->owner();
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
    PlayerLink* link = followedOrFail();
    if (link == nullptr)
        return;
    playTrack(*link, {track, albumFrom(*m_shown.library, track), m_options.cacheFolder},
              [this, link, ending = done()](const PlayerLink::Failure& failure) {
                  ending(failure);
                  if (!failure)
                      return;
                  m_listener.refused(QStringLiteral("%1 does not play that title").arg(link->identity()));
                  if (link == m_followed)
                      publish(); // it may be known now that it opens nothing
              });
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

} // namespace tarnwick::players
