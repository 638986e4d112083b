#include "players/mpris/PlayerModel.h"

#include "players/mpris/BusValue.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick::players {

using namespace std::chrono_literals;

namespace {

constexpr auto quiet = 100ms;            // ends a burst of signals
constexpr auto longestBurst = 400ms;     // players that never are quiet
constexpr auto gapBetweenTracks = 500ms; // Stopped or Paused lasts up to this within a track change
constexpr auto secondLook = 300ms;       // the first position after a change may be the one before it
constexpr auto betweenReadings = 50ms;
constexpr auto afterCommand = 500ms; // what a player did not signal by then it does not signal
constexpr auto patience = 2s;        // for a state that was asked for
constexpr auto retry = 5s;           // after an error that is no time-out
constexpr auto earlyRetry = 500ms;   // for a player that takes its name before it can answer
constexpr int earlyRetries = 20;
constexpr double wholeSecond = 1.0; // players that count whole seconds lag by up to this

double seconds(dispatch::Duration duration) { return std::chrono::duration<double>(duration).count(); }

} // namespace

void PlayerModel::readAll(const QVariantMap& properties, Instant now) {
    m_isReading = false;
    m_isSilent = false;
    m_unanswered = 0;
    m_properties = believable(plainMap(properties));
    const PlayerFacts facts = normalise(m_properties);
    if (m_askedVolume && m_askedVolume->isBeingRead)
        m_askedVolume.reset();
    if (m_askedShuffle && m_askedShuffle->isBeingRead) {
        m_ignoresShuffle = facts.shuffle != m_askedShuffle->value;
        m_askedShuffle.reset();
    }
    if (m_burst) { // its end will be read again
        if (!m_isReady) {
            m_readInBurst = facts;
            m_readInBurstAt = now;
        }
        return;
    }
    watchMovement(facts, now);
    if (m_isReady)
        conclude(now);
    else
        concludeFirst(now);
    if (facts.position && !m_heldSince)
        takePosition(*facts.position, now);
}

void PlayerModel::readFailed(bool timedOut, Instant now) {
    m_isReading = false;
    m_isSilent = true;
    const bool wasHanging = isHanging();
    m_unanswered = timedOut ? m_unanswered + 1 : 0;
    if (m_isReady && !m_burst && isHanging() != wasHanging)
        conclude(now);
    const bool isEarly = !m_isReady && ++m_earlyFailures <= earlyRetries;
    readAt(timedOut ? now : now + (isEarly ? earlyRetry : retry));
}

void PlayerModel::change(const QVariantMap& changed, const QStringList& invalidated, Instant now) {
    m_unanswered = 0; // it lives
    QVariantMap plain = plainMap(changed);
    const bool hasPosition = plain.remove(QStringLiteral("Position")) > 0;
    const QVariantMap good = believable(plain);
    for (auto entry = good.begin(); entry != good.end(); ++entry)
        m_properties.insert(entry.key(), entry.value());
    if (!good.isEmpty() || good.size() != plain.size() || !invalidated.isEmpty() || hasPosition)
        extendBurst(now);
}

void PlayerModel::seeked(Instant now) {
    m_unanswered = 0;
    // The argument may be the place before, so it is not looked at.
    m_readingsOfTrack = 0;
    if (m_pausedAt)
        m_pausedAt = now;
    readAt(now);
    readAt(now + secondLook);
}

void PlayerModel::stateWasAskedFor(Instant now) { m_askedUntil = now + patience; }

void PlayerModel::positionWasAskedFor(Instant now) {
    if (m_isReady && !m_burst)
        readAt(now);
}

void PlayerModel::readLater(Instant now) { readAt(now + afterCommand); }

void PlayerModel::volumeWasSet(double volume) {
    m_askedVolume = Asked<double>{volume};
    m_belief.volume = volume;
}

void PlayerModel::shuffleWasSet(bool shuffle) {
    m_askedShuffle = Asked<bool>{shuffle};
    m_belief.shuffle = shuffle;
}

void PlayerModel::volumeWasAnswered(bool accepted, Instant now) {
    if (!m_askedVolume)
        return;
    m_askedVolume->isAnswered = true;
    readAt(accepted ? now + afterCommand : now);
}

void PlayerModel::shuffleWasAnswered(bool accepted, Instant now) {
    if (!m_askedShuffle)
        return;
    m_askedShuffle->isAnswered = true;
    readAt(accepted ? now + afterCommand : now);
}

void PlayerModel::advance(Instant now) {
    if (m_burst && (now >= m_burst->last + quiet || now >= m_burst->first + longestBurst)) {
        const bool fromStopped = m_belief.state == PlayerState::Stopped;
        if (m_isReady)
            conclude(now);
        else if (m_readInBurst) // the next reading may fall into the next burst
            concludeFirst(now);
        m_burst.reset();
        readAt(now);
        if (fromStopped || m_heldSince)
            readAt(now + secondLook); // does it move?
    } else if (m_heldSince && now >= *m_heldSince + gapBetweenTracks && !m_burst) {
        conclude(now);
    }
}

std::optional<PlayerModel::Instant> PlayerModel::deadline() const {
    std::optional<Instant> earliest;
    const auto consider = [&](Instant when) { earliest = earliest ? std::min(*earliest, when) : when; };
    if (m_burst)
        consider(std::min(m_burst->last + quiet, m_burst->first + longestBurst));
    else if (m_heldSince)
        consider(*m_heldSince + gapBetweenTracks);
    if (!m_isReading && !m_readings.empty())
        consider(std::max(*std::min_element(m_readings.begin(), m_readings.end()), m_nextReading));
    return earliest;
}

bool PlayerModel::wantsReading(Instant now) const {
    return !m_isReading && now >= m_nextReading &&
           std::any_of(m_readings.begin(), m_readings.end(), [now](Instant when) { return when <= now; });
}

void PlayerModel::readWasSent(Instant now) {
    m_isReading = true;
    if (!m_firstAsked)
        m_firstAsked = now;
    m_nextReading = now + betweenReadings;
    std::erase_if(m_readings, [now](Instant when) { return when <= now; });
    if (m_askedVolume)
        m_askedVolume->isBeingRead = m_askedVolume->isAnswered;
    if (m_askedShuffle)
        m_askedShuffle->isBeingRead = m_askedShuffle->isAnswered;
}

void PlayerModel::extendBurst(Instant now) {
    if (m_burst)
        m_burst->last = now;
    else
        m_burst = Burst{now, now};
}

void PlayerModel::concludeFirst(Instant now) {
    m_isReady = true;
    m_askedUntil = now + patience; // there is nothing before it to hold on to
    readAt(now + secondLook);
    conclude(now);
    m_askedUntil = now;
    m_belief.stateSince = m_firstAsked.value_or(now);
    // What was read in the middle of a change may be one track's text with another's position.
    const std::optional<PlayerFacts> early = std::exchange(m_readInBurst, std::nullopt);
    if (m_burst && early && early->position && isSameTrack(early->metadata, m_belief.metadata))
        setPosition(*early->position, m_readInBurstAt);
}

void PlayerModel::conclude(Instant now) {
    const PlayerFacts facts = normalise(m_properties);
    takeSettings(facts);
    const bool moves = m_isMoving && facts.status == PlayerState::Stopped && !facts.metadata.isEmpty();
    const bool wasStopped = m_belief.state == PlayerState::Stopped;
    if (!concludeState(moves ? PlayerState::Playing : facts.status, now))
        return;
    if (!facts.metadata.isEmpty())
        concludeTrack(facts.metadata, now);
    const double rate = m_belief.state == PlayerState::Playing && !isHanging() ? facts.rate : 0;
    if (m_belief.position.rate != rate || (wasStopped && m_belief.state != PlayerState::Stopped)) {
        m_belief.position.seconds = m_belief.position.valueAt(now);
        m_belief.position.at = now;
        m_belief.position.rate = rate;
    }
}

/// Whether `state` is believed.
bool PlayerModel::concludeState(PlayerState state, Instant now) {
    if (state == m_belief.state) {
        m_heldSince.reset();
        return true;
    }
    if (state != PlayerState::Playing && now >= m_askedUntil) {
        if (!m_heldSince)
            m_heldSince = m_burst ? m_burst->first : now;
        if (now < *m_heldSince + gapBetweenTracks)
            return false;
    }
    // It has been so since the first signal that said so.
    const Instant since = m_heldSince.value_or(m_burst ? m_burst->first : now);
    setPosition(m_belief.position.valueAt(since), now);
    m_pausedAt.reset();
    if (state == PlayerState::Paused)
        m_pausedAt = now;
    m_heldSince.reset();
    m_belief.state = state;
    m_belief.stateSince = since;
    m_askedUntil = now;
    m_readingsOfTrack = 0;
    readAt(now);
    readAt(now + secondLook);
    return true;
}

void PlayerModel::concludeTrack(const Metadata& metadata, Instant now) {
    Metadata& known = m_belief.metadata;
    if (known == metadata)
        return;
    if (!isSameTrack(known, metadata) || m_belief.trackSerial == 0) {
        ++m_belief.trackSerial;
        m_positionBefore = m_belief.position;
        m_readingsOfTrack = 0;
        m_lastReading.reset();
        m_stoppedAt.reset();
        setPosition(0, m_burst ? m_burst->first : now);
    }
    if (known.track.duration != metadata.track.duration || m_readingsOfTrack == 0) {
        readAt(now);
        readAt(now + secondLook);
    }
    known = metadata;
    m_belief.position.limit =
        metadata.track.duration > 0 ? std::optional(metadata.track.duration) : std::nullopt;
}

void PlayerModel::takeSettings(const PlayerFacts& facts) {
    if (!m_askedVolume)
        m_belief.volume = facts.volume;
    if (!m_askedShuffle)
        m_belief.shuffle = facts.shuffle;
    m_belief.capabilities = facts.capabilities;
    if (m_ignoresShuffle)
        m_belief.capabilities.canShuffle = false;
}

void PlayerModel::takePosition(double value, Instant now) {
    const std::optional<Reading> last = std::exchange(m_lastReading, Reading{value, now});
    const int reading = m_readingsOfTrack++;
    const double believed = m_belief.position.valueAt(now);
    // Players answer with the old track's position until the new one is open.
    if (reading == 0 && m_belief.trackSerial > 1 && value > 3 &&
        std::abs(value - m_positionBefore.valueAt(now)) < 2)
        return;
    if (m_belief.state == PlayerState::Playing) {
        const bool isStuck =
            value == 0 && last && last->seconds == 0 && believed >= wholeSecond && reading > 1;
        const bool isRounded =
            value == std::floor(value) && value < believed && believed - value < wholeSecond && reading > 0;
        if (isStuck || isRounded)
            return;
    } else if (m_pausedAt && reading > 1) {
        // Some go on counting while they are paused.
        const double counted = believed + seconds(now - *m_pausedAt);
        if (value > believed && value < counted + 1.5)
            return;
    }
    if (std::abs(value - believed) >= 0.05)
        setPosition(value, now);
}

/// Finds out whether a player that says Stopped plays all the same.
void PlayerModel::watchMovement(const PlayerFacts& facts, Instant now) {
    if (facts.status != PlayerState::Stopped || facts.metadata.isEmpty() || !facts.position) {
        m_isMoving = false;
        m_stoppedAt.reset();
        return;
    }
    if (!m_stoppedAt || !isSameTrack(m_belief.metadata, facts.metadata)) {
        m_stoppedAt = Reading{*facts.position, now};
        return;
    }
    const double passed = seconds(now - m_stoppedAt->at);
    const double moved = *facts.position - m_stoppedAt->seconds;
    if (passed < 0.2)
        return;
    m_isMoving = moved > passed * 0.2 && moved < passed * 4 + 1;
    m_stoppedAt = Reading{*facts.position, now};
}

void PlayerModel::setPosition(double seconds, Instant now) {
    m_belief.position.seconds = seconds;
    m_belief.position.at = now;
}

void PlayerModel::readAt(Instant when) {
    if (m_readings.size() < 16)
        m_readings.push_back(when);
}

} // namespace tarnwick::players
