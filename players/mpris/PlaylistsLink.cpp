#include "players/mpris/PlaylistsLink.h"

#include "players/mpris/BusValue.h"
#include "players/mpris/PlayerLink.h"

#include <utility>

namespace tarnwick::players {

namespace {

constexpr int soon = 100; // ms
constexpr uint mostPlaylists = 5000;
constexpr int mostTimeOuts = 3; // of a player that answers other questions
const QString interface = QStringLiteral("org.mpris.MediaPlayer2.Playlists");

/// A playlist as the interface describes it: id, name, icon.
Playlist playlistOf(const QVariantList& fields) {
    return {fields.value(0).toString(), fields.value(1).toString().left(1000)};
}

} // namespace

PlaylistsLink::PlaylistsLink(PlayerLink& player, std::function<void()> changed)
    : m_player(player), m_changed(std::move(changed)) {
    m_soon.setSingleShot(true);
    QObject::connect(&m_soon, &QTimer::timeout, &player, [this] { read(); });
}

void PlaylistsLink::refresh() {
    if (!m_soon.isActive())
        m_soon.start(m_isReading || !m_playlists.empty() ? soon : 0);
}

void PlaylistsLink::read() {
    if (m_isReading) {
        m_isWanted = true;
        return;
    }
    m_isReading = true;
    m_player.readProperties(interface, [this](const std::optional<QVariantMap>& properties) {
        if (!properties)
            giveUp();
        else if (properties->isEmpty())
            take({}, *properties); // it has no such interface
        else
            readList(*properties);
    });
}

void PlaylistsLink::readList(const QVariantMap& properties) {
    // The order of the user's own is the player's own, where it knows that one.
    const QStringList orderings = textsOf(properties.value(QStringLiteral("Orderings")));
    const QString own = QStringLiteral("UserDefined");
    QDBusMessage message = m_player.method(interface, QStringLiteral("GetPlaylists"));
    message.setArguments({0U, mostPlaylists,
                          orderings.contains(own) ? own : orderings.value(0, QStringLiteral("Alphabetical")),
                          false});
    m_player.send(message, [this, properties](const QDBusMessage& reply) {
        if (PlayerLink::isTimeOut(reply)) {
            giveUp();
            return;
        }
        std::vector<Playlist> playlists;
        for (const QVariant& entry : plainValue(reply.arguments().value(0)).toList()) {
            if (Playlist playlist = playlistOf(entry.toList()); !playlist.name.isEmpty())
                playlists.push_back(std::move(playlist));
        }
        take(std::move(playlists), properties);
    });
}

void PlaylistsLink::take(std::vector<Playlist> playlists, const QVariantMap& properties) {
    m_timeOuts = 0;
    QString active;
    // (valid, (id, name, icon)); some leave the name to the list.
    const QVariantList given = properties.value(QStringLiteral("ActivePlaylist")).toList();
    if (flagOf(given.value(0)).value_or(false)) {
        const Playlist playing = playlistOf(given.value(1).toList());
        active = playing.name;
        for (const Playlist& known : playlists) {
            if (known.id == playing.id)
                active = known.name;
        }
    }
    const bool isNews = playlists != m_playlists || active != m_active;
    m_playlists = std::move(playlists);
    m_active = active;
    end(isNews);
}

/// What is known stays until the player answers again.
void PlaylistsLink::giveUp() {
    if (++m_timeOuts < mostTimeOuts)
        m_player.whenItAnswers([this] { refresh(); });
    end(false);
}

void PlaylistsLink::end(bool isNews) {
    m_isReading = false;
    if (!std::exchange(m_isKnown, true) || isNews)
        m_changed();
    if (std::exchange(m_isWanted, false))
        refresh();
}

} // namespace tarnwick::players
