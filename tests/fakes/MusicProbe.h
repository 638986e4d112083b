#pragma once

#include "players/MusicApplication.h"
#include "players/MusicTerms.h"
#include "script/values/Application.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace tarnwick {

/// Looks at a music application as a script does, and waits for what it should come to say.
class MusicProbe {
public:
    explicit MusicProbe(players::MusicApplication& music) : m_music(music) {
        m_music.setChangeHandler([this](players::Changes changes) {
            const QString seen = state() + u'|' + title() + u'|' + artist() + u'|' + album() + u'|' +
                                 QString::number(real(players::terms::Duration)) + u'|' +
                                 QString::number(cover().size());
            const std::lock_guard lock(m_mutex);
            if (m_history.isEmpty() || m_history.last() != seen)
                m_history.append(seen);
            m_lastSeen = seen;
            m_changes |= changes;
            ++m_announcements;
            m_changed.notify_all();
        });
    }
    MusicProbe(const MusicProbe&) = delete;
    MusicProbe& operator=(const MusicProbe&) = delete;
    ~MusicProbe() { m_music.setChangeHandler({}); }

    std::shared_ptr<script::Application> application() {
        return m_music.scripting().application(QStringLiteral("Music"));
    }

    /// "playing", "paused" or "stopped".
    QString state() { return application()->property(players::terms::PlayerState).constantName(); }
    bool isRunning() { return application()->isRunning(); }

    /// A property of the current track; Nothing when there is none.
    script::Value fact(script::Term property) {
        try {
            return application()->property(players::terms::CurrentTrack).asObject()->property(property);
        } catch (const script::Error&) {
            return {};
        }
    }
    QString text(script::Term property) {
        const script::Value value = fact(property);
        return value.is(script::Kind::Text) ? value.asText() : QString();
    }
    qint64 number(script::Term property) {
        const script::Value value = fact(property);
        return value.is(script::Kind::Integer) ? value.asInteger() : 0;
    }
    double real(script::Term property) {
        const script::Value value = fact(property);
        return value.is(script::Kind::Real) ? value.asReal() : 0;
    }
    QString title() { return text(script::terms::Name); }
    QString artist() { return text(players::terms::Artist); }
    QString album() { return text(players::terms::Album); }

    /// The bytes of the cover; empty when there is none.
    QByteArray cover() {
        try {
            const auto track = application()->property(players::terms::CurrentTrack).asObject();
            const auto artworks =
                track->elements({.elementClass = players::terms::Artwork, .from = 1, .to = 1});
            return artworks.empty() ? QByteArray()
                                    : artworks.front()->property(players::terms::Data).asData();
        } catch (const script::Error&) {
            return {};
        }
    }

    /// A property of the application; Nothing when it has none.
    script::Value setting(script::Term property) {
        try {
            return application()->property(property);
        } catch (const script::Error&) {
            return {};
        }
    }
    double position() {
        const script::Value value = setting(players::terms::PlayerPosition);
        return value.is(script::Kind::Real) ? value.asReal() : -1;
    }
    /// 0 to 100; -1 when the player has none.
    qint64 volume() {
        const script::Value value = setting(players::terms::SoundVolume);
        return value.is(script::Kind::Integer) ? value.asInteger() : -1;
    }

    /// The values of `property` of the tracks of the library.
    QStringList library(script::Term property = script::terms::Name) {
        QStringList result;
        for (const script::Value& value : playlist(players::terms::LibraryPlaylist)
                                              ->values({.elementClass = players::terms::Track}, property))
            result.append(value.is(script::Kind::Text) ? value.asText() : QString::number(value.asInteger()));
        return result;
    }
    script::ObjectPointer playlist(script::Term kind) {
        return application()->elements({.elementClass = kind, .from = 1, .to = 1}).front();
    }
    /// The first of the library's tracks, or of the playlists, that is called so; it must be there.
    script::Value named(script::Term kind, const QString& name) {
        const script::Filter filter{.op = script::Filter::Operator::Equal,
                                    .property = script::terms::Name,
                                    .value = script::Value::text(name)};
        return script::Value::object(
            application()->elements({.elementClass = kind, .filter = &filter, .from = 1, .to = 1}).at(0));
    }
    QStringList playlists() {
        QStringList result;
        for (const auto& each : application()->elements({.elementClass = players::terms::UserPlaylist}))
            result.append(each->property(script::terms::Name).asText());
        return result;
    }

    void perform(script::Term command, const script::Value& direct = {}) {
        application()->perform(command, direct, {});
    }

    /// Blocks until `condition` holds; whether it did within `timeout`.
    bool eventually(const std::function<bool()>& condition,
                    std::chrono::milliseconds timeout = std::chrono::seconds(5)) {
        const auto end = std::chrono::steady_clock::now() + timeout;
        while (!condition()) {
            std::unique_lock lock(m_mutex);
            if (std::chrono::steady_clock::now() > end)
                return false;
            // Some conditions are about the clock or the player's record, so not only when told.
            m_changed.wait_for(lock, std::chrono::milliseconds(10));
        }
        return true;
    }

    /// What was announced since the last call.
    players::Changes takeChanges() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_changes, players::Changes());
    }
    /// Blocks until an announcement comes, or has come last, at which `title` was to be seen; whether one
    /// did.
    bool isAnnounced(const QString& title) {
        return eventually([&] {
            const std::lock_guard lock(m_mutex);
            return m_lastSeen.section(u'|', 1, 1) == title;
        });
    }
    /// What there was to see at each announcement since the last call, without repetitions:
    /// "state|title|artist|album|duration|size of the cover".
    QStringList takeHistory() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_history, QStringList());
    }
    int announcements() {
        const std::lock_guard lock(m_mutex);
        return m_announcements;
    }

private:
    players::MusicApplication& m_music;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    players::Changes m_changes;
    QStringList m_history;
    QString m_lastSeen; ///< at the last announcement
    int m_announcements = 0;
};

} // namespace tarnwick
