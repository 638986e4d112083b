#include "music/MusicSource.h"

#include "music/MusicSourceLink.h"
#include "music/Numerals.h"
#include "music/ReplyDecoder.h"
#include "music/Scripts.h"
#include "visuals/FormatClassifier.h"

#include <QFileInfo>

namespace tarnwick {

using dispatch::QualityOfService;
using replies::itemText;
using script::Descriptor;
using namespace std::chrono_literals;

namespace {

constexpr auto nowPlayingInterval = 5s;
constexpr auto shuffleInterval = 10s;
constexpr auto volumeInterval = 5s;
constexpr auto elapsedTimeInterval = 1s;

constexpr int artistItem = 2;
constexpr int albumItem = 3;
constexpr int artworkItem = 11;

const QString unknownAlbum = QStringLiteral("Album sconosciuto");

MusicSource* sharedSource = nullptr;

/// Prints nothing: that a stream has no file is no news.
std::optional<QString> folderOfTrack(const ScriptRunner& runner) {
    const auto reply = runner.runDirectly(scripts::trackLocation()).reply;
    const QString path = reply ? reply->text().value_or(QString()) : QString();
    return path.isEmpty() ? std::nullopt : std::optional(QFileInfo(path).path());
}

} // namespace

MusicSource::MusicSource(Parts parts)
    : m_parts(parts), m_link(std::make_shared<Link>(parts)),
      m_lasting(parts.dispatcher.globalQueue(QualityOfService::UserInteractive)) {
    m_link->source = this;
}

MusicSource::~MusicSource() {
    if (m_followed)
        m_followed->setChangeHandler({});
    m_link->source = nullptr;
    if (sharedSource == this)
        sharedSource = nullptr;
}

MusicSource* MusicSource::shared() { return sharedSource; }

void MusicSource::setShared(MusicSource* source) { sharedSource = source; }

void MusicSource::follow(players::MusicApplication& music) {
    m_followed = &music;
    music.setChangeHandler([link = m_link](players::Changes changes) {
        // A flood of announcements is one question.
        if (link->announced.fetch_or(changes.toInt()) == 0)
            link->parts.dispatcher.globalQueue(QualityOfService::Default).async([link] {
                answerAnnouncement(link, players::Changes::fromInt(link->announced.exchange(0)));
            });
    });
}

void MusicSource::answerAnnouncement(const std::shared_ptr<Link>& link, players::Changes changes) {
    using players::Change;
    if (changes & (Change::Track | Change::State | Change::Position | Change::Library | Change::Player))
        requestNowPlaying(link, {});
    if (changes & (Change::Shuffle | Change::Player))
        requestShuffle(link, scripts::getShuffle(), {});
    if (changes & (Change::Volume | Change::Player))
        requestVolume(link, {});
    if (changes & (Change::Track | Change::Playlist | Change::Player))
        requestPlaylistName(link, changes.testFlag(Change::Player), {});
    if (changes & (Change::Capabilities | Change::Player))
        deliver(link, [](MusicSource& source) { Q_EMIT source.playerChanged(); });
    if (changes & (Change::Track | Change::Library | Change::Player))
        deliver(link, [](MusicSource& source) {
            if (source.isPlayerActive())
                source.fetchTracksByDisc();
        });
}

void MusicSource::startUpdating() {
    stopUpdating();
    dispatch::Queue& queue = m_parts.dispatcher.globalQueue(QualityOfService::Default);
    const std::weak_ptr<Link> weak = m_link;
    const auto poll = [&](dispatch::Duration interval, auto request) {
        return m_parts.dispatcher.makeTimer(queue, interval, [weak, request] {
            if (const auto link = weak.lock())
                request(link);
        });
    };
    updateTimer = poll(nowPlayingInterval, [](const auto& link) { requestNowPlaying(link, {}); });
    shuffleSyncTimer =
        poll(shuffleInterval, [](const auto& link) { requestShuffle(link, scripts::getShuffle(), {}); });
    volumeSyncTimer = poll(volumeInterval, [](const auto& link) { requestVolume(link, {}); });
}

void MusicSource::stopUpdating() {
    updateTimer.reset();
    shuffleSyncTimer.reset();
    volumeSyncTimer.reset();
}

void MusicSource::startElapsedTimeTimer() {
    elapsedTimeTimer.reset();
    elapsedTimeTimer = m_parts.dispatcher.makeTimer(
        m_parts.dispatcher.mainQueue(), elapsedTimeInterval, [weak = std::weak_ptr(m_link)] {
            const auto link = weak.lock();
            if (!link || !link->source || !link->source->m_isPlaying)
                return;
            MusicSource& source = *link->source;
            source.publish(source.m_elapsedTime, source.m_elapsedTime + 1.0,
                           &MusicSource::elapsedTimeChanged);
            source.m_changes.deliver();
        });
}

void MusicSource::deliver(const std::shared_ptr<Link>& link, std::function<void(MusicSource&)> task,
                          dispatch::Task applied) {
    link->parts.dispatcher.mainQueue().async([link, task = std::move(task), applied = std::move(applied)] {
        if (link->source) {
            task(*link->source);
            // A watcher may have ended the source.
            if (link->source)
                link->source->m_changes.deliver();
        }
        if (applied)
            applied();
    });
}

void MusicSource::fetchNowPlaying(dispatch::Task applied) { requestNowPlaying(m_link, std::move(applied)); }

void MusicSource::requestNowPlaying(const std::shared_ptr<Link>& link, dispatch::Task applied) {
    const std::lock_guard order(link->nowPlayingOrder);
    const auto reply = link->parts.runner->runAppleScript(scripts::nowPlaying());
    if (!reply) {
        link->parts.log(QStringLiteral("Errore: impossibile eseguire AppleScript."));
        deliver(
            link, [](MusicSource& source) { source.resetNow(); }, std::move(applied));
        return;
    }
    // Made here, so that the main thread finds the cover decoded.
    if (const auto artwork = reply->item(artworkItem))
        link->parts.images->decode(artwork->data());
    const bool hasName = !replies::itemText(*reply, albumItem, {}).isEmpty();
    const QString folder = hasName ? QString() : folderOfTrack(*link->parts.runner).value_or(QString());
    deliver(
        link, [reply, folder](MusicSource& source) { source.applyNowPlayingReply(*reply, folder); },
        std::move(applied));
}

void MusicSource::applyNowPlayingReply(const Descriptor& reply, const QString& folder) {
    const QString state = replies::itemText(reply, 12, QStringLiteral("stopped"));
    publish(m_isPlaying, state == QLatin1String("playing"), &MusicSource::isPlayingChanged);
    publish(m_isPaused, state == QLatin1String("paused"), &MusicSource::isPausedChanged);
    publish(m_isPlayerActive, m_isPlaying || m_isPaused, &MusicSource::isPlayerActiveChanged);
    if (!m_isPlayerActive) {
        resetNow();
        return;
    }
    // No name begins with a line feed.
    if (const QString album = itemText(reply, albumItem, unknownAlbum); !album.isEmpty())
        identifyAlbum(album);
    else
        identifyAlbum(u'\n' + (folder.isEmpty() ? u'\n' + itemText(reply, artistItem, {}) : folder));
    applyTrackFacts(reply);
    applyFileFacts(reply);
}

/// Before the fields of the album are published, so that whoever hears of them finds it new.
void MusicSource::identifyAlbum(const QString& identity) {
    if (std::exchange(m_albumIdentity, identity) != identity)
        Q_EMIT albumIdentityChanged();
}

void MusicSource::applyTrackFacts(const Descriptor& reply) {
    const auto integer = [&](int index) { return decimalInteger(itemText(reply, index, {})); };

    publishIfChanged(m_currentTrackTitle, itemText(reply, 1, QStringLiteral("Titolo sconosciuto")),
                     &MusicSource::currentTrackTitleChanged);
    publishIfChanged(m_currentArtistName, itemText(reply, artistItem, QStringLiteral("Artista sconosciuto")),
                     &MusicSource::currentArtistNameChanged);
    publishIfChanged(m_currentAlbumName, itemText(reply, albumItem, unknownAlbum),
                     &MusicSource::currentAlbumNameChanged);
    if (const auto year = decimalInteger(itemText(reply, 4, {}).remove(QLatin1Char('.'))))
        publishIfChanged(m_currentTrackYear, year, &MusicSource::currentTrackYearChanged);
    else
        publish(m_currentTrackYear, std::nullopt, &MusicSource::currentTrackYearChanged);
    if (const auto number = integer(5))
        publishIfChanged(m_currentTrackNumber, *number, &MusicSource::currentTrackNumberChanged);
    if (const auto number = integer(6))
        publishIfChanged(m_currentDiscNumber, number, &MusicSource::currentDiscNumberChanged);
    const auto discs = integer(7);
    publish(m_totalDiscs, discs >= 2 ? discs : std::nullopt, &MusicSource::totalDiscsChanged);
    publishIfChanged(m_currentTrackGroup, itemText(reply, 8, QStringLiteral("Gruppo sconosciuto")),
                     &MusicSource::currentTrackGroupChanged);
    publishIfChanged(m_currentTrackFormat,
                     formatCode(itemText(reply, 9, QStringLiteral("unknown")).toLower()),
                     &MusicSource::currentTrackFormatChanged);
    publishIfChanged(m_currentTrackComment, itemText(reply, 10, QStringLiteral("Nessun commento")),
                     &MusicSource::currentTrackCommentChanged);
}

void MusicSource::applyFileFacts(const Descriptor& reply) {
    const auto artwork = reply.item(artworkItem);
    auto cover = artwork ? m_parts.images->decode(artwork->data()) : std::nullopt;
    publish(m_currentAlbumArtwork, cover ? cover : m_parts.noCover, &MusicSource::currentAlbumArtworkChanged);
    publishIfChanged(m_trackDuration, replies::itemNumber(reply, 13), &MusicSource::trackDurationChanged);
    publishIfChanged(m_elapsedTime, replies::itemNumber(reply, 14), &MusicSource::elapsedTimeChanged);
    if (const auto names = reply.item(15))
        publishIfChanged(m_trackNames, replies::texts(*names), &MusicSource::trackNamesChanged);
    else
        publish(m_trackNames, {}, &MusicSource::trackNamesChanged);
    if (const auto durations = reply.item(16))
        publishIfChanged(m_trackDurations, replies::numbers(*durations), &MusicSource::trackDurationsChanged);
    else
        publish(m_trackDurations, {}, &MusicSource::trackDurationsChanged);
    publishIfChanged(m_currentGenre, replies::itemText(reply, 17, QStringLiteral("Genere sconosciuto")),
                     &MusicSource::currentGenreChanged);
    if (const auto bitRate = reply.item(18))
        publish(m_currentBitRate, bitRate->doubleValue(), &MusicSource::currentBitRateChanged);
    if (const auto size = reply.item(19))
        publish(m_currentFileSize, size->doubleValue(), &MusicSource::currentFileSizeChanged);
    if (const auto sampleRate = reply.item(20))
        publish(m_currentSampleRate, sampleRate->doubleValue(), &MusicSource::currentSampleRateChanged);
}

void MusicSource::resetTrackInfo() {
    if (!m_parts.dispatcher.isMainThread()) {
        deliver(m_link, [](MusicSource& source) { source.resetNow(); });
        return;
    }
    resetNow();
    m_changes.deliver();
}

void MusicSource::resetNow() {
    identifyAlbum({});
    publish(m_currentTrackTitle, {}, &MusicSource::currentTrackTitleChanged);
    publish(m_currentArtistName, {}, &MusicSource::currentArtistNameChanged);
    publish(m_currentAlbumName, QString(), &MusicSource::currentAlbumNameChanged);
    publish(m_currentAlbumArtwork, std::nullopt, &MusicSource::currentAlbumArtworkChanged);
    publish(m_currentTrackYear, std::nullopt, &MusicSource::currentTrackYearChanged);
    publish(m_trackDuration, 0, &MusicSource::trackDurationChanged);
    publish(m_elapsedTime, 0, &MusicSource::elapsedTimeChanged);
    publish(m_isPlaying, false, &MusicSource::isPlayingChanged);
    publish(m_isPaused, false, &MusicSource::isPausedChanged);
    publish(m_isPlayerActive, false, &MusicSource::isPlayerActiveChanged);
    publish(m_currentTrackNumber, 0, &MusicSource::currentTrackNumberChanged);
    publish(m_currentTrackGroup, {}, &MusicSource::currentTrackGroupChanged);
    publish(m_currentTrackFormat, {}, &MusicSource::currentTrackFormatChanged);
    publish(m_currentTrackComment, {}, &MusicSource::currentTrackCommentChanged);
    publish(m_currentDiscNumber, std::nullopt, &MusicSource::currentDiscNumberChanged);
    publish(m_trackNames, {}, &MusicSource::trackNamesChanged);
    publish(m_trackDurations, {}, &MusicSource::trackDurationsChanged);
    publish(m_tracksByDisc, {}, &MusicSource::tracksByDiscChanged);
    publish(m_currentGenre, {}, &MusicSource::currentGenreChanged);
    publish(m_currentBitRate, 0, &MusicSource::currentBitRateChanged);
    publish(m_currentFileSize, 0, &MusicSource::currentFileSizeChanged);
    publish(m_currentSampleRate, 0, &MusicSource::currentSampleRateChanged);
    publish(m_currentPlaylistName, {}, &MusicSource::currentPlaylistNameChanged);
}

void MusicSource::setPreviousAlbumTitle(const std::optional<QString>& title) {
    publish(m_previousAlbumTitle, title, &MusicSource::previousAlbumTitleChanged);
}

} // namespace tarnwick
