#include "platform/musicapp/MusicTerms.h"

namespace tarnwick::musicapp::terms {

const script::Terminology& music() {
    static const script::Terminology terminology = [] {
        script::Terminology words;
        words.addClass(QStringLiteral("track"), QStringLiteral("tracks"), Track)
            .addClass(QStringLiteral("playlist"), QStringLiteral("playlists"), Playlist)
            .addClass(QStringLiteral("library playlist"), QStringLiteral("library playlists"),
                      LibraryPlaylist)
            .addClass(QStringLiteral("user playlist"), QStringLiteral("user playlists"), UserPlaylist)
            .addClass(QStringLiteral("artwork"), QStringLiteral("artworks"), Artwork);
        words.addProperty(QStringLiteral("player state"), PlayerState)
            .addProperty(QStringLiteral("player position"), PlayerPosition)
            .addProperty(QStringLiteral("sound volume"), SoundVolume)
            .addProperty(QStringLiteral("shuffle enabled"), ShuffleEnabled)
            .addProperty(QStringLiteral("current track"), CurrentTrack)
            .addProperty(QStringLiteral("current playlist"), CurrentPlaylist);
        words.addProperty(QStringLiteral("artist"), Artist)
            .addProperty(QStringLiteral("album"), Album)
            .addProperty(QStringLiteral("genre"), Genre)
            .addProperty(QStringLiteral("year"), Year)
            .addProperty(QStringLiteral("comment"), Comment)
            .addProperty(QStringLiteral("grouping"), Grouping)
            .addProperty(QStringLiteral("kind"), TrackKind)
            .addProperty(QStringLiteral("track number"), TrackNumber)
            .addProperty(QStringLiteral("disc number"), DiscNumber)
            .addProperty(QStringLiteral("disc count"), DiscCount)
            .addProperty(QStringLiteral("compilation"), Compilation)
            .addProperty(QStringLiteral("duration"), Duration)
            .addProperty(QStringLiteral("bit rate"), BitRate)
            .addProperty(QStringLiteral("sample rate"), SampleRate)
            .addProperty(QStringLiteral("size"), Size)
            .addProperty(QStringLiteral("location"), Location)
            .addProperty(QStringLiteral("container"), Container)
            .addProperty(QStringLiteral("data"), Data)
            .addProperty(QStringLiteral("raw data"), RawData);
        words.addEnumerator(QStringLiteral("playing"), Playing)
            .addEnumerator(QStringLiteral("paused"), Paused)
            .addEnumerator(QStringLiteral("stopped"), Stopped);
        words.addCommand(QStringLiteral("play"), Play)
            .addCommand(QStringLiteral("pause"), Pause)
            .addCommand(QStringLiteral("playpause"), PlayPause)
            .addCommand(QStringLiteral("stop"), Stop)
            .addCommand(QStringLiteral("next track"), NextTrack)
            .addCommand(QStringLiteral("previous track"), PreviousTrack);
        return words;
    }();
    return terminology;
}

} // namespace tarnwick::musicapp::terms
