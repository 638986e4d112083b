#pragma once

#include "players/mpris/PlayerFacts.h"

#include <vector>

namespace tarnwick::players {

/// What is believed about one player.
struct Belief {
    PlayerState state = PlayerState::Stopped;
    dispatch::Instant stateSince{0}; ///< of the first state: when it was asked for
    Metadata metadata;               ///< of the current or last track
    int trackSerial = 0;             ///< counts the tracks
    Position position;
    std::optional<double> volume;
    std::optional<bool> shuffle;
    Capabilities capabilities;
};

/// Turns what a player says, with all its contradictions, into what is believed about it. Knows nothing
/// of the bus; it is told the time and says when it wants to be called again and when it wants the
/// player's properties read.
///
/// Signals come in bursts, of which only the end counts; a pause that nobody asked for may be the gap
/// between two tracks; a position may be the last track's. The limits are named in the source.
class PlayerModel {
public:
    using Instant = dispatch::Instant;

    /// All properties were read: what is not among them the player does not have.
    void readAll(const QVariantMap& properties, Instant now);
    /// A reading brought no answer: `timedOut`, or an error.
    void readFailed(bool timedOut, Instant now);

    /// The player signalled these properties.
    void change(const QVariantMap& changed, const QStringList& invalidated, Instant now);
    void seeked(Instant now);

    /// A command is on its way that is to stop or pause the player.
    void stateWasAskedFor(Instant now);
    /// Somebody wants to know the position.
    void positionWasAskedFor(Instant now);
    /// Something was done at the player that it may not signal.
    void readLater(Instant now);

    /// A value was sent to the player. It is believed until the player has had its say.
    void volumeWasSet(double volume);
    void shuffleWasSet(bool shuffle);
    /// The player answered; `accepted` is false for an error.
    void volumeWasAnswered(bool accepted, Instant now);
    void shuffleWasAnswered(bool accepted, Instant now);

    /// Draws the conclusions that are due.
    void advance(Instant now);

    /// When `advance` has something to do next; none when only the player can change anything.
    std::optional<Instant> deadline() const;
    /// Whether the properties should be read now. The caller then calls `readWasSent`.
    bool wantsReading(Instant now) const;
    void readWasSent(Instant now);

    /// Whether the first state has arrived.
    bool isReady() const { return m_isReady; }
    /// Whether a reading failed and none has succeeded since.
    bool isSilent() const { return m_isSilent; }
    /// Whether so many readings in a row were left unanswered that nothing it said may still be true. Its
    /// position stands still until it answers.
    bool isHanging() const { return m_unanswered >= mostUnanswered; }
    const Belief& belief() const { return m_belief; }

private:
    static constexpr int mostUnanswered = 5; // a player that is slow is not gone

    struct Burst {
        Instant first;
        Instant last;
    };
    struct Reading {
        double seconds;
        Instant at;
    };
    template <typename T>
    struct Asked {
        T value;
        bool isAnswered = false;
        bool isBeingRead = false; ///< the reading under way was sent after the answer
    };

    void extendBurst(Instant now);
    void concludeFirst(Instant now);
    void conclude(Instant now);
    bool concludeState(PlayerState state, Instant now);
    void concludeTrack(const Metadata& metadata, Instant now);
    void takeSettings(const PlayerFacts& facts);
    void takePosition(double seconds, Instant now);
    void watchMovement(const PlayerFacts& facts, Instant now);
    void setPosition(double seconds, Instant now);
    void readAt(Instant when);

    QVariantMap m_properties; ///< as the player said them last
    std::optional<Instant> m_firstAsked;
    bool m_isReady = false;
    bool m_isSilent = false;
    bool m_isReading = false;
    int m_unanswered = 0;            ///< readings, since the last answer
    int m_earlyFailures = 0;         ///< to read a first state
    std::vector<Instant> m_readings; ///< that are wanted
    Instant m_nextReading{0};        ///< not before
    std::optional<Burst> m_burst;
    std::optional<PlayerFacts> m_readInBurst; ///< while there is no first state
    Instant m_readInBurstAt{0};

    Belief m_belief;
    std::optional<Instant> m_heldSince; ///< a state is being held that the player no longer reports
    Instant m_askedUntil{0};            ///< until then a state is believed at once
    std::optional<Asked<double>> m_askedVolume;
    std::optional<Asked<bool>> m_askedShuffle;
    bool m_ignoresShuffle = false; ///< it swallowed one

    bool m_isMoving = false;            ///< says Stopped, but its position goes on
    std::optional<Reading> m_stoppedAt; ///< where it was when it said Stopped before
    std::optional<Reading> m_lastReading;
    int m_readingsOfTrack = 0; ///< since the track changed or was sought in
    Position m_positionBefore; ///< of the track before
    std::optional<Instant> m_pausedAt;
};

} // namespace tarnwick::players
