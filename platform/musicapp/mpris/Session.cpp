#include "platform/musicapp/mpris/Session.h"

#include "platform/musicapp/mpris/BusValue.h"
#include "platform/musicapp/mpris/PlayerChooser.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QUrl>

#include <algorithm>
#include <atomic>

namespace tarnwick::musicapp {

namespace {

constexpr int coverPatience = 150; // ms that a new album waits for its cover
const QString namePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString busService = QStringLiteral("org.freedesktop.DBus");

/// Connections are known by name all over the process.
QString uniqueConnectionName() {
    static std::atomic<int> last = 0;
    return QStringLiteral("tarnwick-players-%1").arg(++last);
}

/// A bus name of a player, but not of one that only repeats what others say.
bool isPlayerName(const QString& name) {
    return name.startsWith(namePrefix) && name != namePrefix + QLatin1String("playerctld");
}

QDBusConnection connection(const QString& address, const QString& name) {
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
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
      m_loader(thread, dispatcher, images) {
    m_choice.setSingleShot(true);
    connect(&m_choice, &QTimer::timeout, this, &Session::playersChanged);
    m_patience.setSingleShot(true);
    m_patience.setTimerType(Qt::PreciseTimer);
    connect(&m_patience, &QTimer::timeout, this, &Session::publish);
    if (m_bus.isConnected()) {
        connectToBus();
        listNames();
    } else {
        m_namesAreKnown = true;
        publish();
    }
}

Session::~Session() {
    m_players.clear();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void Session::connectToBus() {
    auto* watcher = new QDBusServiceWatcher(QStringLiteral("org.mpris.MediaPlayer2*"), m_bus,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &Session::ownerChanged);
    // Every sender is heard; signals carry the owner's unique name, which is how players are known here.
    m_bus.connect(QString(), objectPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                  QStringLiteral("PropertiesChanged"), this, SLOT(propertiesChanged(QDBusMessage)));
    m_bus.connect(QString(), objectPath, QStringLiteral("org.mpris.MediaPlayer2.Player"),
                  QStringLiteral("Seeked"), this, SLOT(seeked(QDBusMessage)));
}

void Session::listNames() {
    const auto ask = [this](const QString& method, const QVariantList& arguments, const auto& answered) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            busService, QStringLiteral("/org/freedesktop/DBus"), busService, method);
        message.setArguments(arguments);
        auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, 1000), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [answered](QDBusPendingCallWatcher* finished) {
                    finished->deleteLater();
                    answered(finished->reply().arguments().value(0));
                });
    };
    ask(QStringLiteral("ListNames"), {}, [this, ask](const QVariant& names) {
        m_namesAreKnown = true;
        for (const QString& name : names.toStringList()) {
            if (!isPlayerName(name))
                continue;
            ++m_ownersAwaited;
            ask(QStringLiteral("GetNameOwner"), {name}, [this, name](const QVariant& owner) {
                --m_ownersAwaited;
                foundOwner(name, owner.toString());
                m_choice.start(0);
            });
        }
        m_choice.start(0);
    });
}

void Session::ownerChanged(const QString& name, const QString& before, const QString& after) {
    if (!isPlayerName(name))
        return;
    std::erase_if(m_players, [&](const Known& known) {
        const bool isGone = known.link->busName() == name && known.link->owner() == before;
        if (isGone && known.link.get() == m_followed)
            follow(nullptr);
        return isGone;
    });
    foundOwner(name, after);
    m_choice.start(0);
}

void Session::foundOwner(const QString& name, const QString& owner) {
    // One program may have several names; the first is enough.
    if (owner.isEmpty() || linkOf(owner) != nullptr)
        return;
    m_players.push_back({std::make_unique<PlayerLink>(m_bus, name, owner, m_dispatcher,
                                                      [this] {
                                                          beliefChanged();
                                                          if (!m_choice.isActive())
                                                              m_choice.start(0);
                                                      }),
                         std::nullopt});
    m_players.back().link->start();
}

PlayerLink* Session::linkOf(const QString& owner) const {
    const auto found = std::find_if(m_players.begin(), m_players.end(),
                                    [&](const Known& known) { return known.link->owner() == owner; });
    return found == m_players.end() ? nullptr : found->link.get();
}

void Session::propertiesChanged(const QDBusMessage& message) {
    PlayerLink* link = linkOf(message.service());
    if (link == nullptr || message.arguments().size() < 2 ||
        message.arguments().at(0).toString() != QLatin1String("org.mpris.MediaPlayer2.Player"))
        return;
    link->propertiesChanged(plainValue(message.arguments().at(1)).toMap(),
                            message.arguments().value(2).toStringList());
}

void Session::seeked(const QDBusMessage& message) {
    if (PlayerLink* link = linkOf(message.service()))
        link->seeked();
}

void Session::playersChanged() {
    const auto now = m_dispatcher.now();
    std::vector<Candidate> candidates;
    bool allAnswered = m_namesAreKnown && m_ownersAwaited == 0;
    bool anyPlays = false;
    for (Known& known : m_players) {
        const PlayerLink& link = *known.link;
        if (!m_options.player.isEmpty() && link.isReady() && !link.isNamed(m_options.player))
            continue;
        allAnswered = allAnswered && link.hasAnswered();
        if (!link.isReady())
            continue;
        const bool isPlaying = link.belief().state == PlayerState::Playing;
        anyPlays = anyPlays || isPlaying;
        if (isPlaying)
            known.lastPlayed = now;
        candidates.push_back({link.owner(), isPlaying, known.lastPlayed, songOf(link.belief())});
    }
    // At the start, one that plays need not wait for the others.
    if (m_followed == nullptr && !allAnswered && !anyPlays)
        return;
    PlayerLink* chosen =
        linkOf(choosePlayer(candidates, m_followed != nullptr ? m_followed->owner() : QString()));
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
    m_loader.cancel();
    m_details = {};
    m_patience.stop();
}

/// Lets the outside see what is believed about the followed player, once what belongs to it is there.
void Session::beliefChanged() {
    if (m_followed == nullptr)
        return;
    const Belief& belief = m_followed->belief();
    if (belief.trackSerial != m_trackSerial || belief.metadata.url != m_detailsUrl ||
        belief.metadata.artUrl != m_detailsArtUrl)
        loadDetails();
    if (!m_patience.isActive())
        publish();
}

void Session::loadDetails() {
    const Belief& belief = m_followed->belief();
    const bool isNewTrack = belief.trackSerial != m_trackSerial;
    m_trackSerial = belief.trackSerial;
    m_detailsUrl = belief.metadata.url;
    m_detailsArtUrl = belief.metadata.artUrl;
    if (isNewTrack) {
        const bool isSameAlbum = m_shown.current && !belief.metadata.track.album.isEmpty() &&
                                 m_shown.current->album == belief.metadata.track.album;
        m_details.path.clear();
        if (!isSameAlbum)
            m_details.artwork.reset();
        m_patience.start(coverPatience);
    }
    m_isLoading = true;
    m_loader.load(belief.metadata, [this](const TrackDetails& details) { detailsLoaded(details); });
}

void Session::detailsLoaded(const TrackDetails& details) {
    m_isLoading = false;
    const auto before = m_details.artwork;
    m_details = details;
    // Within a track, and within an album, a cover that is there stays.
    if (!m_details.artwork)
        m_details.artwork = before;
    m_patience.stop();
    publish();
}

void Session::publish() {
    Snapshot next = m_followed != nullptr ? makeSnapshot() : Snapshot();
    m_shown = next;
    m_listener.publish(std::move(next), !m_isLoading);
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
    snapshot.capabilities.canOpenTitle = m_followed->canOpenFiles();
    if (belief.state == PlayerState::Stopped)
        return snapshot;
    snapshot.current = belief.metadata.track;
    snapshot.current->path = m_details.path;
    if (snapshot.current->year == 0)
        snapshot.current->year = belief.metadata.contentYear;
    snapshot.artwork = m_details.artwork;
    snapshot.position = belief.position;
    const auto& before = m_shown.library->tracks();
    if (before.size() == 1 && before.front() == *snapshot.current)
        snapshot.library = m_shown.library;
    else
        snapshot.library = std::make_shared<const Library>(std::vector{*snapshot.current});
    return snapshot;
}

PlayerLink::Done Session::done() {
    return [this](const PlayerLink::Failure& failure) { m_listener.finished(failure); };
}

/// The followed player; without one `refuse` is told.
PlayerLink* Session::followedOr(const PlayerLink::Done& refuse) const {
    if (m_followed == nullptr)
        refuse(QStringLiteral("there is no player"));
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
    if (PlayerLink* link = followedOr(done()))
        link->call(methodOf(command), {}, done());
}

void Session::setVolume(double volume) {
    if (PlayerLink* link = followedOr(done())) {
        link->setVolume(volume, done());
        beliefChanged();
    }
}

void Session::setShuffle(bool shuffle) {
    if (PlayerLink* link = followedOr(done())) {
        link->setShuffle(shuffle, done());
        beliefChanged();
    }
}

void Session::setPosition(double seconds) {
    if (PlayerLink* link = followedOr(done()))
        link->setPosition(seconds, done());
}

void Session::play(const Track& track) {
    if (PlayerLink* link = followedOr(done()))
        link->call(QStringLiteral("OpenUri"),
                   {QString::fromLatin1(QUrl::fromLocalFile(track.path).toEncoded())}, done());
}

void Session::positionWasRead() {
    if (m_followed == nullptr)
        return;
    m_followed->model().positionWasAskedFor(m_dispatcher.now());
    m_followed->attend();
}

} // namespace tarnwick::musicapp
