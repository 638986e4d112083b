// The album's tracks: the one request that takes long enough to be overtaken by another album.

#include "music/MusicSourceLink.h"
#include "music/ReplyDecoder.h"
#include "music/Scripts.h"

namespace tarnwick {

using dispatch::QualityOfService;

void MusicSource::fetchTracksByDisc(dispatch::Task applied) {
    if (m_parts.dispatcher.isMainThread()) {
        requestTracksByDisc(m_link, m_albumIdentity, std::move(applied));
        return;
    }
    deliver(m_link, [link = m_link, applied = std::move(applied)](MusicSource& source) {
        requestTracksByDisc(link, source.m_albumIdentity, applied);
    });
}

// Requests that come while one runs are answered together by one more.
void MusicSource::requestTracksByDisc(const std::shared_ptr<Link>& link, const QString& album,
                                      dispatch::Task applied) {
    const std::lock_guard lock(link->tracksMutex);
    link->tracksWanted = true;
    link->tracksAlbum = album;
    if (applied)
        link->tracksApplied.push_back(std::move(applied));
    if (link->tracksRunning)
        return;
    link->tracksRunning = true;
    link->parts.dispatcher.globalQueue(QualityOfService::Background).async([link] {
        for (;;) {
            QString wantedAlbum;
            std::vector<dispatch::Task> waiting;
            {
                const std::lock_guard running(link->tracksMutex);
                link->tracksRunning = std::exchange(link->tracksWanted, false);
                if (!link->tracksRunning)
                    return;
                wantedAlbum = link->tracksAlbum;
                waiting.swap(link->tracksApplied);
            }
            const script::Outcome outcome = link->parts.runner->runDirectly(scripts::tracksByDisc());
            const bool isText = outcome.reply && !outcome.reply->isList() && outcome.reply->text();
            if (outcome.error && !isText)
                link->parts.log(QStringLiteral("Errore AppleScript: ") + outcome.error->toString());
            deliver(
                link,
                [reply = outcome.reply, wantedAlbum](MusicSource& source) {
                    if (reply && source.m_albumIdentity == wantedAlbum)
                        source.applyTracksByDisc(*reply);
                },
                [waiting = std::move(waiting)] {
                    for (const dispatch::Task& task : waiting)
                        task();
                });
        }
    });
}

void MusicSource::applyTracksByDisc(const script::Descriptor& reply) {
    if (reply.isList()) {
        m_albumOfTracks = m_albumIdentity;
        publish(m_tracksByDisc, replies::tracksByDisc(reply), &MusicSource::tracksByDiscChanged);
    } else if (const auto text = reply.text()) {
        m_albumOfTracks = m_albumIdentity;
        publish(m_currentTrackList, text->split(QStringLiteral(", ")), &MusicSource::currentTrackListChanged);
        publish(m_tracksByDisc, {DiscTrack{1, m_currentTrackList}}, &MusicSource::tracksByDiscChanged);
    }
}

bool MusicSource::hasTracksOfCurrentAlbum() const { return m_albumOfTracks == m_albumIdentity; }

} // namespace tarnwick
