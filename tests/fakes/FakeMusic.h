#pragma once

#include "players/Player.h"
#include "players/ScriptableMusic.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tarnwick::fakes {

struct FakeTrack {
    QString name, artist, album;
    int trackNumber = 0;
    int discNumber = 0;
    bool compilation = false;
    double duration = 0.0;
    players::Track facts = {}; ///< the others
};

/// A player: what is in its library, what plays, and what a script has done to it.
struct FakeLibrary final : players::Player {
    std::vector<FakeTrack> tracks;
    QStringList playlists; ///< the first one plays
    players::PlayerState state = players::PlayerState::Playing;
    std::size_t current = 0;
    QByteArray artwork; ///< of the current track; null when it has none
    bool running = true;
    bool shuffle = false;
    double volume = 0.3;
    /// Commands and assignments in their order: "play current track", "set sound volume to 42".
    QStringList record;
    /// How often the elements of the library were asked for, and how often single values in one question.
    int elementCalls = 0;
    int valuesCalls = 0;

    /// To be called after `tracks` has changed.
    void makeIndex();

    std::shared_ptr<const players::Snapshot> snapshot() const override;
    dispatch::Instant now() const override { return {}; }
    void positionWasRead() override {}
    void playlistsWereRead() override {}
    void command(Command) override {}
    void setVolume(double level) override { volume = level; }
    void setShuffle(bool on) override { shuffle = on; }
    void setPosition(double seconds) override { record.append(QStringLiteral("to %1 s").arg(seconds)); }
    void play(const players::Track&) override {}
    void play(const players::Playlist&) override {}
    std::optional<QString> launch() override {
        running = true;
        return {};
    }

private:
    std::shared_ptr<const players::Library> m_library = players::Library::empty();
};

/// Knows "Music", over a fake player, and nothing else.
class FakeProvider final : public script::ApplicationProvider {
public:
    explicit FakeProvider(std::shared_ptr<FakeLibrary> library) : m_library(std::move(library)) {}

    const script::Terminology* terminology(const QString& name) const override;
    std::shared_ptr<script::Application> application(const QString& name) override;

private:
    std::shared_ptr<FakeLibrary> m_library;
    players::ScriptableMusic m_music{*m_library};
};

} // namespace tarnwick::fakes
