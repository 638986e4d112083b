#pragma once

#include "players/Snapshot.h"

#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace tarnwick::players {

class PlayerLink;

/// A player's Playlists interface. Lives on the bus's thread.
class PlaylistsLink {
public:
    /// `changed` is called when the playlists, or the one that plays, are others.
    PlaylistsLink(PlayerLink& player, std::function<void()> changed);

    /// Asks for everything again; many requests in a short time are one.
    void refresh();

    /// Whether there is nothing to wait for: the player has answered, or has not in time.
    bool isKnown() const { return m_isKnown; }
    /// In the player's order and spelling.
    const std::vector<Playlist>& playlists() const { return m_playlists; }
    /// The name of the one that plays; empty when none does or the player does not say.
    const QString& active() const { return m_active; }

private:
    void read();
    void readList(const QVariantMap& properties);
    void take(std::vector<Playlist> playlists, const QVariantMap& properties);
    void end(bool isNews);
    void giveUp();

    PlayerLink& m_player;
    std::function<void()> m_changed;
    QTimer m_soon;
    bool m_isReading = false;
    bool m_isWanted = false; ///< again, when the reading under way has ended
    bool m_isKnown = false;
    int m_timeOuts = 0; ///< without an answer between them
    std::vector<Playlist> m_playlists;
    QString m_active;
};

} // namespace tarnwick::players
