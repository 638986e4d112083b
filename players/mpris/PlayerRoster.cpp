#include "players/mpris/PlayerRoster.h"

#include "players/mpris/BusValue.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QTimer>

#include <algorithm>

namespace tarnwick::players {

namespace {

constexpr int timeout = 1000; // ms, of every call
constexpr int pause = 1000;   // ms, before a bus that did not answer is asked again
const QString namePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString busService = QStringLiteral("org.freedesktop.DBus");

/// A bus name of a player, but not of one that only repeats what others say.
bool isPlayerName(const QString& name) {
    return name.startsWith(namePrefix) && name != namePrefix + QLatin1String("playerctld");
}

} // namespace

PlayerRoster::PlayerRoster(const QDBusConnection& bus, dispatch::Dispatcher& dispatcher, Handlers handlers)
    : m_bus(bus), m_dispatcher(dispatcher), m_handlers(std::move(handlers)) {
    m_namesAreKnown = !m_bus.isConnected();
    if (m_bus.isConnected()) {
        hear();
        listNames();
    }
}

PlayerLink* PlayerRoster::linkOf(const QString& owner) const {
    const auto found = std::find_if(m_links.begin(), m_links.end(),
                                    [&](const auto& link) { return link->owner() == owner; });
    return found == m_links.end() ? nullptr : found->get();
}

void PlayerRoster::hear() {
    auto* watcher = new QDBusServiceWatcher(QStringLiteral("org.mpris.MediaPlayer2*"), m_bus,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &PlayerRoster::ownerChanged);
    // Every sender is heard; signals carry the owner's unique name, which is how players are known here.
    m_bus.connect(QString(), objectPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                  QStringLiteral("PropertiesChanged"), this, SLOT(propertiesChanged(QDBusMessage)));
    m_bus.connect(QString(), objectPath, QStringLiteral("org.mpris.MediaPlayer2.Player"),
                  QStringLiteral("Seeked"), this, SLOT(seeked(QDBusMessage)));
    for (const char* signal : {"TrackListReplaced", "TrackAdded", "TrackRemoved", "TrackMetadataChanged"})
        m_bus.connect(QString(), objectPath, QString(), QLatin1String(signal), this,
                      SLOT(trackListChanged(QDBusMessage)));
    m_bus.connect(QString(), objectPath, QString(), QStringLiteral("PlaylistChanged"), this,
                  SLOT(playlistsChanged(QDBusMessage)));
}

void PlayerRoster::listNames() {
    ask(QStringLiteral("ListNames"), {}, [this](const QVariant& names) {
        m_namesAreKnown = true;
        for (const QString& name : names.toStringList()) {
            if (isPlayerName(name))
                findOwner(name);
        }
        m_handlers.changed();
    });
}

void PlayerRoster::findOwner(const QString& name) {
    ++m_ownersAwaited;
    ask(QStringLiteral("GetNameOwner"), {name}, [this, name](const QVariant& owner) {
        --m_ownersAwaited;
        foundOwner(name, owner.toString());
        m_handlers.changed();
    });
}

/// Calls `answered` with what the bus says, nothing for an error. A bus that is late is asked again.
void PlayerRoster::ask(const QString& method, const QVariantList& arguments,
                       const std::function<void(const QVariant&)>& answered) {
    QDBusMessage message = QDBusMessage::createMethodCall(busService, QStringLiteral("/org/freedesktop/DBus"),
                                                          busService, method);
    message.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, timeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, method, arguments, answered](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusMessage reply = finished->reply();
                if (PlayerLink::isTimeOut(reply))
                    QTimer::singleShot(pause, this, [=, this] { ask(method, arguments, answered); });
                else
                    answered(reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0)
                                                                        : QVariant());
            });
}

void PlayerRoster::ownerChanged(const QString& name, const QString& before, const QString& after) {
    if (!isPlayerName(name))
        return;
    const auto gone = std::find_if(m_links.begin(), m_links.end(), [&](const auto& link) {
        return link->busName() == name && link->owner() == before;
    });
    if (gone != m_links.end()) {
        m_handlers.leaves(**gone);
        m_links.erase(gone);
    }
    foundOwner(name, after);
    m_handlers.changed();
}

void PlayerRoster::foundOwner(const QString& name, const QString& owner) {
    // One program may have several names; the first is enough.
    if (!owner.startsWith(u':') || linkOf(owner) != nullptr)
        return;
    m_links.push_back(
        std::make_unique<PlayerLink>(m_bus, name, owner, m_dispatcher, [this] { m_handlers.changed(); }));
    m_links.back()->start();
}

void PlayerRoster::propertiesChanged(const QDBusMessage& message) {
    PlayerLink* link = linkOf(message.service());
    if (link == nullptr || message.arguments().size() < 2)
        return;
    const QString interface = message.arguments().at(0).toString();
    if (interface == QLatin1String("org.mpris.MediaPlayer2.Player"))
        link->propertiesChanged(plainValue(message.arguments().at(1)).toMap(),
                                message.arguments().value(2).toStringList());
    else if (interface.endsWith(QLatin1String(".TrackList")))
        trackListChanged(message);
    else if (interface.endsWith(QLatin1String(".Playlists")))
        playlistsChanged(message);
}

void PlayerRoster::seeked(const QDBusMessage& message) {
    if (PlayerLink* link = linkOf(message.service()))
        link->seeked();
}

void PlayerRoster::trackListChanged(const QDBusMessage& message) {
    if (PlayerLink* link = linkOf(message.service()))
        m_handlers.trackListChanged(*link);
}

void PlayerRoster::playlistsChanged(const QDBusMessage& message) {
    if (PlayerLink* link = linkOf(message.service()))
        m_handlers.playlistsChanged(*link);
}

} // namespace tarnwick::players
