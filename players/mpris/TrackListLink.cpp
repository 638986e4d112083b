#include "players/mpris/TrackListLink.h"

#include "players/mpris/BusValue.h"
#include "players/mpris/PlayerLink.h"

#include <QDBusObjectPath>

#include <utility>

namespace tarnwick::players {

namespace {

constexpr qsizetype chunk = 200; // tracks asked for in one call, so that a long list fits its time-out
constexpr qsizetype longest = 20000;
constexpr int soon = 100;       // ms
constexpr int mostRepeats = 10; // for a player that never leaves its list alone
const QString interface = QStringLiteral("org.mpris.MediaPlayer2.TrackList");

} // namespace

TrackListLink::TrackListLink(PlayerLink& player) : m_player(player) {
    m_soon.setSingleShot(true);
    QObject::connect(&m_soon, &QTimer::timeout, &player, [this] { readIds(); });
}

void TrackListLink::refresh(std::function<void()> ready) {
    if (m_isCurrent && !m_isReading) {
        ready();
        return;
    }
    m_waiting.push_back(std::move(ready));
    if (!m_isReading)
        readIds();
}

void TrackListLink::readIds() {
    m_isReading = true;
    m_isCurrent = true;
    m_incoming.clear();
    m_player.readProperties(interface, [this](const std::optional<QVariantMap>& properties) {
        if (!properties) {
            giveUp();
            return;
        }
        QStringList ids;
        for (const QVariant& id : properties->value(QStringLiteral("Tracks")).toList())
            ids.append(id.toString());
        readMetadata(ids.mid(0, longest), 0);
    });
}

void TrackListLink::readMetadata(const QStringList& ids, qsizetype from) {
    QList<QDBusObjectPath> paths;
    for (const QString& id : ids.mid(from, chunk)) {
        if (const QDBusObjectPath path(id); !path.path().isEmpty())
            paths.append(path);
    }
    if (paths.isEmpty()) {
        finish();
        return;
    }
    QDBusMessage message = m_player.method(interface, QStringLiteral("GetTracksMetadata"));
    message.setArguments({QVariant::fromValue(paths)});
    m_player.send(message, [this, ids, from](const QDBusMessage& reply) {
        if (PlayerLink::isTimeOut(reply)) {
            giveUp();
            return;
        }
        const QVariantList maps = plainValue(reply.arguments().value(0)).toList();
        for (const QVariant& map : maps)
            m_incoming.push_back(normaliseMetadata(map.toMap()));
        if (maps.isEmpty())
            finish();
        else
            readMetadata(ids, from + chunk);
    });
}

void TrackListLink::finish() {
    m_timeOuts = 0;
    // A list that changed meanwhile may have been read half.
    if (!m_isCurrent && ++m_repeats < mostRepeats) {
        m_soon.start(soon);
        return;
    }
    m_repeats = 0;
    m_entries = std::exchange(m_incoming, {});
    tellThoseWaiting();
}

void TrackListLink::giveUp() {
    // One that never answers this is not waited for at every track.
    m_isCurrent = ++m_timeOuts >= mostTimeOuts;
    m_repeats = 0;
    tellThoseWaiting();
}

void TrackListLink::tellThoseWaiting() {
    m_isReading = false;
    for (const auto& ready : std::exchange(m_waiting, {}))
        ready();
}

} // namespace tarnwick::players
