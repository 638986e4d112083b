#include "players/ScriptableMusic.h"

#include "players/MusicTerms.h"
#include "players/ScriptObjects.h"
#include "script/values/Coercion.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::players {

using script::Error;
using script::ObjectPointer;
using script::Query;
using script::Term;
using script::Value;

namespace {

Value constantOf(PlayerState state) {
    switch (state) {
    case PlayerState::Playing:
        return Value::constant(terms::Playing, QStringLiteral("playing"));
    case PlayerState::Paused:
        return Value::constant(terms::Paused, QStringLiteral("paused"));
    case PlayerState::Stopped:
        break;
    }
    return Value::constant(terms::Stopped, QStringLiteral("stopped"));
}

std::optional<Player::Command> commandOf(Term term) {
    switch (term) {
    case terms::Play:
        return Player::Command::Play;
    case terms::Pause:
        return Player::Command::Pause;
    case terms::PlayPause:
        return Player::Command::PlayPause;
    case terms::Stop:
        return Player::Command::Stop;
    case terms::NextTrack:
        return Player::Command::NextTrack;
    case terms::PreviousTrack:
        return Player::Command::PreviousTrack;
    default:
        return std::nullopt;
    }
}

/// The application in one run of a script.
class MusicObject final : public script::Application {
public:
    explicit MusicObject(Player& player) : m_player(player) { refresh(); }

    QString name() const override { return QStringLiteral("Music"); }

    bool isRunning() const override {
        refresh();
        return m_snapshot->running;
    }

    Value property(Term property) const override {
        if (property == terms::PlayerState) {
            refresh();
            return constantOf(m_snapshot->state);
        }
        if (property == script::terms::Name)
            return Value::text(name());
        const SnapshotPointer& now = running();
        switch (property) {
        case terms::PlayerPosition:
            m_player.positionWasRead();
            return Value::real(now->position.valueAt(m_player.now()));
        case terms::SoundVolume:
            if (!now->volume)
                throw Error::noSuchObject();
            return Value::integer(std::lround(*now->volume * 100));
        case terms::ShuffleEnabled:
            if (!now->shuffle)
                throw Error::noSuchObject();
            return Value::boolean(*now->shuffle);
        case terms::CurrentTrack:
            if (!now->current)
                throw Error::noSuchObject();
            return Value::object(std::make_shared<TrackObject>(now));
        case terms::CurrentPlaylist:
            if (now->currentPlaylist.isEmpty())
                throw Error::noSuchObject();
            return Value::object(std::make_shared<UserPlaylistObject>(Playlist{{}, now->currentPlaylist}));
        default:
            throw Error::noSuchObject();
        }
    }

    void setProperty(Term property, const Value& value) override {
        const SnapshotPointer now = running();
        switch (property) {
        case terms::SoundVolume:
            if (!now->volume)
                throw Error::noSuchObject();
            m_player.setVolume(
                static_cast<double>(std::clamp<qint64>(script::requireInteger(value), 0, 100)) / 100);
            break;
        case terms::ShuffleEnabled:
            if (!now->shuffle)
                throw Error::noSuchObject();
            m_player.setShuffle(script::requireBoolean(value));
            break;
        case terms::PlayerPosition:
            if (!now->current)
                throw Error::noSuchObject();
            m_player.setPosition(std::max(0.0, script::requireReal(value)));
            break;
        default:
            throw Error::notSettable();
        }
        refresh();
    }

    std::vector<ObjectPointer> elements(const Query& query) const override {
        // A player that is not there has no playlists, which is no error.
        if (query.elementClass == terms::UserPlaylist)
            return select(userPlaylists(), query);
        const SnapshotPointer& now = running();
        if (query.elementClass == terms::Track)
            return LibraryPlaylistObject(now->library).elements(query);
        std::vector<ObjectPointer> playlists;
        if (query.elementClass == terms::LibraryPlaylist || query.elementClass == terms::Playlist)
            playlists.push_back(std::make_shared<LibraryPlaylistObject>(now->library));
        else
            throw Error::noSuchObject();
        if (query.elementClass == terms::Playlist) {
            const auto users = userPlaylists();
            playlists.insert(playlists.end(), users.begin(), users.end());
        }
        return select(std::move(playlists), query);
    }

    Value perform(Term command, const Value& direct, const Parameters&) override {
        if (command == script::terms::Launch || command == script::terms::Activate) {
            if (const auto failure = m_player.launch())
                throw Error{script::errors::NotRunning, *failure};
        } else if (command == terms::BackTrack) {
            backTrack();
        } else if (const auto known = commandOf(command)) {
            running();
            if (command == terms::Play && !direct.isNothing())
                play(direct);
            else
                m_player.command(*known);
        } else {
            throw Error::notUnderstood();
        }
        refresh();
        return {};
    }

private:
    void refresh() const {
        m_snapshot = m_player.snapshot();
        m_taken = m_player.now();
    }

    /// The snapshot of a player that runs.
    const SnapshotPointer& running() const {
        if (m_player.now() - m_taken > std::chrono::seconds(1))
            refresh();
        if (!m_snapshot->running)
            throw Error::notRunning();
        return m_snapshot;
    }

    std::vector<ObjectPointer> userPlaylists() const {
        m_player.playlistsWereRead();
        std::vector<ObjectPointer> playlists;
        for (const Playlist& playlist : m_snapshot->playlists)
            playlists.push_back(std::make_shared<UserPlaylistObject>(playlist));
        return playlists;
    }

    /// To the beginning of the track, or to the one before where it has only just begun.
    void backTrack() {
        const SnapshotPointer& now = running();
        if (now->position.valueAt(m_player.now()) >= 1)
            m_player.setPosition(0);
        else
            m_player.command(Player::Command::PreviousTrack);
    }

    void play(const Value& what) {
        if (!what.is(script::Kind::Object))
            throw Error::noSuchObject();
        const script::Object* object = what.asObject().get();
        if (const auto* track = dynamic_cast<const TrackObject*>(object))
            m_player.play(track->track());
        else if (const auto* playlist = dynamic_cast<const UserPlaylistObject*>(object))
            m_player.play(playlist->playlist());
        else if (dynamic_cast<const LibraryPlaylistObject*>(object) != nullptr)
            m_player.command(Player::Command::Play);
        else
            throw Error::noSuchObject();
    }

    Player& m_player;
    mutable SnapshotPointer m_snapshot;
    mutable dispatch::Instant m_taken{0};
};

bool isMusic(const QString& name) { return name.compare(QLatin1String("Music"), Qt::CaseInsensitive) == 0; }

} // namespace

const script::Terminology* ScriptableMusic::terminology(const QString& name) const {
    return isMusic(name) ? &terms::music() : nullptr;
}

std::shared_ptr<script::Application> ScriptableMusic::application(const QString& name) {
    return isMusic(name) ? std::make_shared<MusicObject>(m_player) : nullptr;
}

} // namespace tarnwick::players
