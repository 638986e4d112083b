#pragma once

#include "platform/script/Application.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tarnwick::fakes {

namespace music {
using script::term;
inline constexpr script::Term Track = term("cTrk");
inline constexpr script::Term LibraryPlaylist = term("cLiP");
inline constexpr script::Term UserPlaylist = term("cUsP");
inline constexpr script::Term Playlist = term("cPly");
inline constexpr script::Term Artwork = term("cArt");
inline constexpr script::Term CurrentTrack = term("pTrk");
inline constexpr script::Term PlayerState = term("pPlS");
inline constexpr script::Term PlayerPosition = term("pPos");
inline constexpr script::Term SoundVolume = term("pVol");
inline constexpr script::Term ShuffleEnabled = term("pShE");
inline constexpr script::Term Album = term("pAlb");
inline constexpr script::Term Artist = term("pArt");
inline constexpr script::Term TrackNumber = term("pTrN");
inline constexpr script::Term DiscNumber = term("pDsN");
inline constexpr script::Term Compilation = term("pAnt");
inline constexpr script::Term Container = term("ctnr");
inline constexpr script::Term Data = term("pPCT");
inline constexpr script::Term Duration = term("pDur");
inline constexpr script::Term Location = term("pLoc");
} // namespace music

struct FakeTrack {
    QString name, artist, album;
    int trackNumber = 0;
    int discNumber = 0;
    bool compilation = false;
    double duration = 0.0;
    /// The other properties by their name; one that is not there is an error.
    QHash<QString, script::Value> facts = {};
};

/// What is in the library, what plays, and what a script has done to it.
struct FakeLibrary {
    std::vector<FakeTrack> tracks;
    QStringList playlists;
    QString state = QStringLiteral("playing");
    std::size_t current = 0;
    bool running = true;
    bool shuffle = false;
    int volume = 30;
    double position = 12.5;
    /// Commands and assignments in their order: "play track 2", "set sound volume to 42".
    QStringList record;
    /// How often the elements of a container were asked for, and how often single values in one question.
    int elementCalls = 0;
    int valuesCalls = 0;

    /// Makes the index over albums; to be called after `tracks` has changed.
    void makeIndex();
    QHash<QString, std::vector<std::size_t>> byAlbum;
};

/// "Music" for scripts: an application with the words that the texts use.
class FakeMusic final : public script::Application {
public:
    explicit FakeMusic(std::shared_ptr<FakeLibrary> library) : m_library(std::move(library)) {}

    QString name() const override { return QStringLiteral("Music"); }
    bool isRunning() const override { return m_library->running; }
    script::Value property(script::Term property) const override;
    void setProperty(script::Term property, const script::Value& value) override;
    std::vector<script::ObjectPointer> elements(const script::Query& query) const override;
    script::Value perform(script::Term command, const script::Value& direct,
                          const Parameters& parameters) override;

    static const script::Terminology& words();

private:
    std::shared_ptr<FakeLibrary> m_library;
};

/// Knows "Music" and nothing else.
class FakeProvider final : public script::ApplicationProvider {
public:
    explicit FakeProvider(std::shared_ptr<FakeLibrary> library) : m_library(std::move(library)) {}

    const script::Terminology* terminology(const QString& name) const override;
    std::shared_ptr<script::Application> application(const QString& name) override;

private:
    std::shared_ptr<FakeLibrary> m_library;
};

} // namespace tarnwick::fakes
