#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwick::players {

/// What the demo library begins with.
enum class DemoScene {
    Playing,
    Paused,
    Stopped,
    TwoDiscs,      ///< a track of the album with two discs
    Cassette,      ///< a track whose folder holds a picture of a cassette
    NoCover,       ///< a track without artwork
    LongTexts,     ///< a track whose texts are longer than any line
    NoPlaylists,   ///< no playlists at all
    ManyPlaylists, ///< more playlists than a list can show at once
};

/// The scene by its name on the command line ("two-discs"); none when there is no such scene.
std::optional<DemoScene> demoSceneNamed(const QString& name);

/// The names of all of them.
QStringList demoSceneNames();

} // namespace tarnwick::players
