#include "players/MusicTerms.h"

namespace tarnwick::players::terms {

namespace {

void addUnprovided(script::Terminology& words) {
    words.addClass(QStringLiteral("file track"), QStringLiteral("file tracks"), term("cFlT"))
        .addClass(QStringLiteral("url track"), QStringLiteral("url tracks"), term("cURT"))
        .addClass(QStringLiteral("shared track"), QStringLiteral("shared tracks"), term("cShT"))
        .addClass(QStringLiteral("folder playlist"), QStringLiteral("folder playlists"), term("cFoP"))
        .addClass(QStringLiteral("source"), QStringLiteral("sources"), term("cSrc"));
    static constexpr std::pair<const char*, Term> properties[] = {
        {"album artist", term("pAlA")},
        {"album rating", term("pAlR")},
        {"current stream title", term("pStT")},
        {"current stream url", term("pStU")},
        {"database id", term("pDID")},
        {"date added", term("pAdd")},
        {"eq enabled", term("pEQ ")},
        {"modification date", term("asmo")},
        {"mute", term("pMut")},
        {"persistent id", term("pPIS")},
        {"played count", term("pPlC")},
        {"played date", term("pPlD")},
        {"properties", term("pALL")},
        {"selection", term("sele")},
        {"shuffle mode", term("pShM")},
        {"skipped count", term("pSkC")},
        {"song repeat", term("pRpt")},
        {"track count", term("pTrC")},
        {"visuals enabled", term("pVsE")},
    };
    for (const auto& [name, code] : properties)
        words.addProperty(QString::fromLatin1(name), code);
    words.addCommand(QStringLiteral("fast forward"), term("Fast"))
        .addCommand(QStringLiteral("rewind"), term("Rwnd"))
        .addCommand(QStringLiteral("resume"), term("Resu"));
}

} // namespace

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
            .addCommand(QStringLiteral("previous track"), PreviousTrack)
            .addCommand(QStringLiteral("back track"), BackTrack);
        addUnprovided(words);
        return words;
    }();
    return terminology;
}

} // namespace tarnwick::players::terms
