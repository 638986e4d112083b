#pragma once

#include "platform/musicapp/mpris/PlayerFacts.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace tarnwick::musicapp {

class PlayerLink;

/// A player's TrackList interface: what it is about to play. Lives on the bus's thread. Only a list that is
/// not empty counts, whatever the player says about having one.
class TrackListLink {
public:
    explicit TrackListLink(PlayerLink& player) : m_player(player) {}

    /// Calls `ready` when the list is known, at once when nothing has changed since the last time.
    void refresh(std::function<void()> ready);

    /// The player signalled that its list is another.
    void invalidate() { m_isCurrent = false; }

    /// In the player's order; empty when it gives none.
    const std::vector<Metadata>& entries() const { return m_entries; }

private:
    void readIds();
    void readMetadata(const QStringList& ids, qsizetype from);
    void finish();

    PlayerLink& m_player;
    bool m_isCurrent = false;
    bool m_isReading = false;
    std::vector<Metadata> m_entries;
    std::vector<Metadata> m_incoming;
    std::vector<std::function<void()>> m_waiting;
};

} // namespace tarnwick::musicapp
