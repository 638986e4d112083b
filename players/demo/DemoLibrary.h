#pragma once

#include "players/Library.h"
#include "players/demo/DemoCovers.h"
#include "players/demo/DemoPlaylist.h"
#include "players/demo/DemoScene.h"

#include <QHash>

#include <memory>
#include <vector>

namespace tarnwick::players {

/// The invented music: albums, sleeves, playlists. The same every time.
struct DemoLibrary {
    std::shared_ptr<const Library> library;
    QHash<QString, DemoCover> covers; ///< by album
    std::vector<DemoPlaylist> playlists;
    int sceneTrack = 0;       ///< the track that the scene is about
    double scenePosition = 0; ///< seconds into it
    int scenePlaylist = -1;   ///< number of the playlist that it is played from; -1 when there is none
};

/// `additionalTracks` generated tracks follow the real ones, in albums of twelve. `cassetteFolder` is where
/// the track of the cassette scene lies; the other folders are as invented as the music.
DemoLibrary makeDemoLibrary(DemoScene scene, int additionalTracks, const QString& cassetteFolder);

} // namespace tarnwick::players
