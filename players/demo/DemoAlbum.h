#pragma once

#include "players/demo/DemoCovers.h"

#include <vector>

namespace tarnwick::players {

/// An invented song. All texts here are UTF-8.
struct DemoSong {
    const char* title;
    int seconds;
    const char* artist = nullptr;  ///< of a compilation; null: the album's
    const char* comment = nullptr; ///< where it differs from the album's
};

/// How the files of an album would be encoded.
struct DemoEncoding {
    const char* kind;   ///< as a person reads it: "FLAC audio file"
    const char* suffix; ///< of the files, without the dot
    int bitRate;        ///< in kbit/s
    int sampleRate;     ///< in Hz
};

/// An invented album.
struct DemoAlbum {
    const char* title;
    const char* artist;
    const char* grouping;
    const char* genre;
    const char* comment;
    int year;
    DemoEncoding encoding;
    DemoCover cover;
    std::vector<std::vector<DemoSong>> discs;
    bool compilation = false;
};

/// All of them: one for every kind of sleeve, script and length of text.
std::vector<DemoAlbum> makeDemoAlbums();

} // namespace tarnwick::players
