// What the user asks of Music, and the facts that are asked for one at a time.

#include "music/MusicSourceLink.h"
#include "music/ReplyDecoder.h"
#include "music/Scripts.h"

#include <QFileInfo>

#include <algorithm>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

/// The time that a player is given to change tracks before the facts are read again.
constexpr auto trackChangeTime = 200ms;

} // namespace

void MusicSource::playPause(dispatch::Task finished) {
    runLasting(scripts::playPause(), [this, finished](const script::Outcome&) { fetchNowPlaying(finished); });
}

void MusicSource::playStartupPlaylist() {
    runLasting(scripts::startupPlaylist(), [this](const script::Outcome& outcome) {
        if (outcome.error)
            m_parts.log(QStringLiteral("❌ Errore AppleScript: ") + outcome.error->toString());
        else
            m_parts.log(QStringLiteral("✅ Playlist 'Musica' avviata con successo!"));
    });
}

void MusicSource::runLasting(const QString& text, std::function<void(const script::Outcome&)> finished) {
    m_lasting.async([link = m_link, text, finished = std::move(finished)] {
        // The play/pause text has the blocking runner's line, the start-up text one of its own.
        script::Outcome outcome;
        if (text == scripts::playPause())
            outcome.reply = link->parts.runner->runAndPrint(text);
        else
            outcome = link->parts.runner->runDirectly(text);
        deliver(link, [outcome, finished](MusicSource&) { finished(outcome); });
    });
}

void MusicSource::nextTrack() {
    m_parts.runner->runAppleScript(scripts::nextTrack());
    refreshSoon();
}

void MusicSource::previousTrack() {
    m_parts.runner->runAppleScript(scripts::previousTrack());
    refreshSoon();
}

void MusicSource::stop() {
    m_parts.runner->runAppleScript(scripts::stop());
    refreshSoon();
}

void MusicSource::seek(double seconds) {
    if (!m_isPlayerActive || m_trackDuration <= 0)
        return;
    const double place = std::clamp(seconds, 0.0, m_trackDuration);
    if (!m_parts.runner->runAppleScript(scripts::setPosition(place)))
        return;
    publish(m_elapsedTime, place, &MusicSource::elapsedTimeChanged);
    m_changes.deliver();
    refreshSoon();
}

void MusicSource::refreshSoon() {
    m_parts.dispatcher.asyncAfter(m_parts.dispatcher.mainQueue(), trackChangeTime,
                                  [weak = std::weak_ptr(m_link)] {
                                      if (const auto link = weak.lock(); link && link->source)
                                          link->source->fetchNowPlaying();
                                  });
}

void MusicSource::toggleShuffle() { requestShuffle(m_link, scripts::toggleShuffle(), {}); }

void MusicSource::syncShuffleState(dispatch::Task applied) {
    requestShuffle(m_link, scripts::getShuffle(), std::move(applied));
}

void MusicSource::requestShuffle(const std::shared_ptr<Link>& link, const QString& text,
                                 dispatch::Task applied) {
    const std::lock_guard order(link->shuffleOrder);
    const auto reply = link->parts.runner->runAppleScript(text);
    deliver(
        link,
        [reply](MusicSource& source) {
            if (reply)
                source.publishIfChanged(source.m_isShuffleOn, reply->booleanValue(),
                                        &MusicSource::isShuffleOnChanged);
        },
        std::move(applied));
}

void MusicSource::syncVolume(dispatch::Task applied) { requestVolume(m_link, std::move(applied)); }

void MusicSource::requestVolume(const std::shared_ptr<Link>& link, dispatch::Task applied) {
    const std::lock_guard order(link->volumeOrder);
    const auto reply = link->parts.runner->runAppleScript(scripts::getVolume());
    deliver(
        link,
        [reply](MusicSource& source) {
            if (reply)
                source.publishIfChanged(source.m_volumeLevel, reply->int32Value() / 100.0,
                                        &MusicSource::volumeLevelChanged);
        },
        std::move(applied));
}

void MusicSource::setVolume(double level) {
    const std::lock_guard order(m_link->volumeOrder);
    if (!m_parts.runner->runAppleScript(scripts::setVolume(level))) {
        m_parts.log(QStringLiteral("Failed to set volume via AppleScript"));
        return;
    }
    deliver(m_link, [level](MusicSource& source) {
        source.publish(source.m_volumeLevel, level, &MusicSource::volumeLevelChanged);
    });
}

void MusicSource::playTrack(const QString& named) {
    if (!m_currentAlbumName) {
        m_parts.log(QStringLiteral("Errore: album non trovato"));
        return;
    }
    const script::Outcome outcome =
        m_parts.runner->runDirectly(scripts::playTitle(named, *m_currentAlbumName));
    if (outcome.error)
        m_parts.log(QStringLiteral("❌ Errore AppleScript: ") + outcome.error->toString());
    else
        fetchTracksByDisc();
}

QStringList MusicSource::fetchPlaylists() const {
    const script::Outcome outcome = m_parts.runner->runDirectly(scripts::playlistNames());
    const auto names = outcome.reply ? outcome.reply->coerceToList() : std::nullopt;
    return names ? replies::texts(*names) : QStringList();
}

std::optional<QString> MusicSource::playPlaylist(const QString& named) {
    const QString wanted = named.trimmed();
    for (const QString& name : fetchPlaylists()) {
        if (name.compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        publish(m_currentPlaylistName, name, &MusicSource::currentPlaylistNameChanged);
        m_changes.deliver();
        const script::Outcome outcome = m_parts.runner->runDirectly(scripts::playPlaylist(name));
        if (outcome.error)
            return outcome.error->toString();
        // The text answers with the reason, or with nothing.
        const QString reason = outcome.reply->text().value_or(QString());
        return reason.isEmpty() ? std::nullopt : std::optional(reason);
    }
    return QStringLiteral("no playlist is called '%1'").arg(named);
}

void MusicSource::fetchCurrentPlaylistName(dispatch::Task applied) {
    requestPlaylistName(m_link, false, std::move(applied));
}

/// The name before stays where Music tells none, unless that was another player's.
void MusicSource::requestPlaylistName(const std::shared_ptr<Link>& link, bool isOfAnotherPlayer,
                                      dispatch::Task applied) {
    const std::lock_guard order(link->playlistOrder);
    const auto reply = link->parts.runner->runAppleScript(scripts::currentPlaylist());
    deliver(
        link,
        [name = reply ? reply->text() : std::nullopt, isOfAnotherPlayer](MusicSource& source) {
            if (name || isOfAnotherPlayer)
                source.publish(source.m_currentPlaylistName, name.value_or(QString()),
                               &MusicSource::currentPlaylistNameChanged);
        },
        std::move(applied));
}

std::optional<QString> MusicSource::currentTrackFolderURL() const {
    const auto reply = m_parts.runner->runAppleScript(scripts::trackLocation());
    const QString path = reply ? reply->text().value_or(QString()) : QString();
    return path.isEmpty() ? std::nullopt : std::optional(QFileInfo(path).path());
}

int MusicSource::currentDiscNumberOfPlayer() const {
    const auto reply = m_parts.runner->runAppleScript(scripts::discNumber());
    return reply ? reply->int32Value() : 0;
}

} // namespace tarnwick
