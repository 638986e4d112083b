#pragma once

#include "players/mpris/PlayerFacts.h"

#include <QStringList>
#include <QTimer>

#include <functional>
#include <vector>

namespace tarnwick::players {

class PlayerLink;

/// A player's TrackList interface: what it is about to play. Lives on the bus's thread. Only a list that is
/// not empty counts, whatever the player says about having one.
class TrackListLink {
public:
    explicit TrackListLink(PlayerLink& player);

    /// Calls `ready` when the list is known, at once when nothing has changed since the last time. When the
    /// player does not answer, that is with the list before.
    void refresh(std::function<void()> ready);

    /// The player signalled that its list is another.
    void invalidate() { m_isCurrent = false; }

    /// Whether the player has left a question about its list unanswered, and asking again may help.
    bool isOverdue() const { return m_timeOuts > 0 && m_timeOuts < mostTimeOuts; }

    /// In the player's order; empty when it gives none.
    const std::vector<Metadata>& entries() const { return m_entries; }

private:
    static constexpr int mostTimeOuts = 3;

    void readIds();
    void readMetadata(const QStringList& ids, qsizetype from);
    void finish();
    void giveUp();
    void tellThoseWaiting();

    PlayerLink& m_player;
    bool m_isCurrent = false;
    bool m_isReading = false;
    int m_timeOuts = 0; ///< without an answer between them
    int m_repeats = 0;  ///< of a reading that was out of date when it ended
    QTimer m_soon;
    std::vector<Metadata> m_entries;
    std::vector<Metadata> m_incoming;
    std::vector<std::function<void()>> m_waiting;
};

} // namespace tarnwick::players
