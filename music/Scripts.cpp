#include "music/Scripts.h"

namespace tarnwick::scripts {

namespace {

// The texts as they are sent, white space included: they are a wire format.

constexpr const char* nowPlayingText = R"script(tell application "Music"
    set playerState to player state as text
    if playerState is "playing" or playerState is "paused" then
        try
            set trackName to name of current track
        on error
            set trackName to "Titolo sconosciuto"
        end try
        try
            set artistName to artist of current track
        on error
            set artistName to "Artista sconosciuto"
        end try
        try
            set albumName to album of current track
        on error
            set albumName to "Album sconosciuto"
        end try
        try
            set albumYear to year of current track
        on error
            set albumYear to "0"
        end try
        try
            set trackNumber to track number of current track
        on error
            set trackNumber to 0
        end try
        try
            set discNumber to disc number of current track
        on error
            set discNumber to 0
        end try
        try
            set totalDiscs to disc count of current track
        on error
            set totalDiscs to 0
        end try
        try
            set trackGroup to grouping of current track
        on error
            set trackGroup to "Gruppo sconosciuto"
        end try
        try
            set trackKind to kind of current track
        on error
            set trackKind to "Formato sconosciuto"
        end try
        try
            set trackComment to comment of current track
        on error
            set trackComment to "Nessun commento"
        end try
        try
            set artworkData to data of artwork 1 of current track
        on error
            set artworkData to missing value
        end try
        
        -- Campi 1–16 come prima
        set trackDuration to duration of current track
        set trackPosition to player position
        set trackNames to name of every track of library playlist 1 whose album is albumName
        set trackDurations to duration of every track of library playlist 1 whose album is albumName
        
        -- Nuovi campi: trackGenre, trackBitRate, trackSize, trackSampleRate (17–20)
        try
            set trackGenre to genre of current track
        on error
            set trackGenre to "Genere sconosciuto"
        end try
        try
            set trackBitRate to bit rate of current track
        on error
            set trackBitRate to 0
        end try
        try
            set trackSize to size of current track
        on error
            set trackSize to 0
        end try
        try
            set trackSampleRate to sample rate of current track
        on error
            set trackSampleRate to 0
        end try

        return {trackName, artistName, albumName, albumYear, trackNumber, discNumber, totalDiscs, trackGroup, trackKind, trackComment, artworkData, playerState, trackDuration, trackPosition, trackNames, trackDurations, trackGenre, trackBitRate, trackSize, trackSampleRate}
    else
        return {"", "", "", "", 0, 0, 0, "Gruppo sconosciuto", "", "Nessun commento", missing value, "stopped", 0, 0, {}, {}, "Genere sconosciuto", 0, 0, 0}
    end if
end tell)script";

constexpr const char* tracksByDiscText = R"script(tell application "Music"
    if player state is playing or player state is paused then
        set currentAlbum to album of current track
        set currentArtist to artist of current track
        set isCompilation to compilation of current track
        set allTracks to {}
        
        if isCompilation then
            set allTracks to (every track of library playlist 1 whose album is currentAlbum)
        else
            set allTracks to (every track of library playlist 1 whose album is currentAlbum and artist is currentArtist)
        end if
        
        set tracksByDisc to {}
        repeat with aTrack in allTracks
            try
                set trackName to name of aTrack
                set trackNum to track number of aTrack
                set discNum to disc number of aTrack
                
                set foundDisc to false
                repeat with disc in tracksByDisc
                    if item 1 of disc = discNum then
                        set end of item 2 of disc to {trackNum, trackName}
                        set foundDisc to true
                        exit repeat
                    end if
                end repeat
                
                if not foundDisc then
                    set end of tracksByDisc to {discNum, {{trackNum, trackName}}}
                end if
            on error errMsg
                log "Errore nel recupero della traccia: " & errMsg
            end try
        end repeat
        
        set sortedTracksByDisc to {}
        repeat with disc in tracksByDisc
            set discNum to item 1 of disc
            set trackList to item 2 of disc
            set sortedTrackList to my sortTracks(trackList)
            set end of sortedTracksByDisc to {discNum, sortedTrackList}
        end repeat
        
        return sortedTracksByDisc
    else
        return "Nessuna traccia in riproduzione o pausa."
    end if
end tell

on sortTracks(tracksList)
    set sortedList to tracksList
    repeat with i from 1 to (count sortedList) - 1
        repeat with j from (i + 1) to (count sortedList)
            if item 1 of (item i of sortedList) > item 1 of (item j of sortedList) then
                set temp to item i of sortedList
                set item i of sortedList to item j of sortedList
                set item j of sortedList to temp
            end if
        end repeat
    end repeat
    return sortedList
end sortTracks)script";

constexpr const char* playPauseText = R"script(tell application "Music"
    if not running then
        launch
        delay 0.1
    end if
    if player state is paused or player state is stopped then
        play
    else if player state is playing then
        pause
    end if
end tell)script";

constexpr const char* nextTrackText = R"script(tell application "Music"
    if player state is playing or player state is paused then
        next track
    end if
end tell)script";

constexpr const char* previousTrackText = R"script(tell application "Music"
    if player state is playing or player state is paused then
        previous track
    end if
end tell)script";

constexpr const char* playlistNamesText = R"script(tell application "Music"
    set playlistNames to name of every user playlist
    return playlistNames
end tell)script";

constexpr const char* currentPlaylistText = R"script(tell application "Music"
    if player state is playing or player state is paused then
        set thePlaylist to container of current track
        set playlistName to name of thePlaylist
        return playlistName
    else
        return ""
    end if
end tell)script";

constexpr const char* trackLocationText = R"script(tell application "Music"
    if player state is playing or player state is paused then
        set trackPath to (get location of current track) as text
        return POSIX path of trackPath
    else
        return ""
    end if
end tell)script";

constexpr const char* discNumberText = R"script(tell application "Music"
    if player state is playing or player state is paused then
        set discNumber to disc number of current track
        return discNumber
    else
        return missing value
    end if
end tell)script";

constexpr const char* getVolumeText = R"script(tell application "Music"
    return sound volume
end tell)script";

constexpr const char* toggleShuffleText = R"script(tell application "Music"
    set shuffle enabled to not shuffle enabled
    return shuffle enabled
end tell)script";

constexpr const char* getShuffleText = R"script(tell application "Music"
    return shuffle enabled
end tell)script";

constexpr const char* startupPlaylistText = R"script(tell application "Music"
    if not running then
        launch
        delay 2
    end if
    play playlist "Musica"
end tell)script";

// What stands before, between and after the escaped title and album.
constexpr const char* playTitleBeforeTitle = R"script(tell application "Music"
    if player state is not stopped then
        try
            play (first track of library playlist 1 whose name is ")script";
constexpr const char* playTitleBetween = R"script(" and album is ")script";
constexpr const char* playTitleBeforeMessageTitle = R"script(")
        on error errMsg
            display dialog "Errore: Il brano ')script";
constexpr const char* playTitleBeforeMessageAlbum = R"script(' non è disponibile nell'album ')script";
constexpr const char* playTitleEnd = R"script('."
            log "Errore AppleScript: " & errMsg
        end try
    else
        display dialog "Errore: La riproduzione non è attualmente attiva."
    end if
end tell)script";

constexpr const char* playPlaylistBefore = R"script(tell application "Music"
    try
        play playlist ")script";
constexpr const char* playPlaylistAfter = R"script("
    on error errMsg
        return errMsg
    end try
end tell)script";

constexpr const char* setVolumeBefore = R"script(tell application "Music"
    set sound volume to )script";
constexpr const char* setVolumeAfter = "\nend tell";

constexpr const char* setPositionBefore = R"script(tell application "Music"
    set player position to )script";
constexpr const char* setPositionAfter = "\nend tell";

constexpr const char* stopText = R"script(tell application "Music"
    stop
end tell)script";

/// Once for a text, so that equal requests share one buffer.
template <const char* const& text>
const QString& once() {
    static const QString result = QString::fromUtf8(text);
    return result;
}

QString escapedQuotes(const QString& text) {
    return QString(text).replace(QLatin1Char('"'), QLatin1String("\\\""));
}

QString escaped(const QString& text) {
    return escapedQuotes(QString(text).replace(QLatin1Char('\\'), QLatin1String("\\\\")));
}

} // namespace

const QString& nowPlaying() { return once<nowPlayingText>(); }
const QString& tracksByDisc() { return once<tracksByDiscText>(); }
const QString& playPause() { return once<playPauseText>(); }
const QString& nextTrack() { return once<nextTrackText>(); }
const QString& previousTrack() { return once<previousTrackText>(); }
const QString& playlistNames() { return once<playlistNamesText>(); }
const QString& currentPlaylist() { return once<currentPlaylistText>(); }
const QString& trackLocation() { return once<trackLocationText>(); }
const QString& discNumber() { return once<discNumberText>(); }
const QString& getVolume() { return once<getVolumeText>(); }
const QString& toggleShuffle() { return once<toggleShuffleText>(); }
const QString& getShuffle() { return once<getShuffleText>(); }
const QString& startupPlaylist() { return once<startupPlaylistText>(); }

QString playTitle(const QString& title, const QString& album) {
    const QString escapedTitle = escaped(title), escapedAlbum = escaped(album);
    return QString::fromUtf8(playTitleBeforeTitle) + escapedTitle + QString::fromUtf8(playTitleBetween) +
           escapedAlbum + QString::fromUtf8(playTitleBeforeMessageTitle) + escapedTitle +
           QString::fromUtf8(playTitleBeforeMessageAlbum) + escapedAlbum + QString::fromUtf8(playTitleEnd);
}

QString playPlaylist(const QString& name) {
    return QString::fromUtf8(playPlaylistBefore) + escapedQuotes(name) + QString::fromUtf8(playPlaylistAfter);
}

QString setPosition(double seconds) {
    return QString::fromUtf8(setPositionBefore) + QString::number(seconds, 'f', 3) +
           QString::fromUtf8(setPositionAfter);
}

const QString& stop() { return once<stopText>(); }

QString setVolume(double level) {
    return QString::fromUtf8(setVolumeBefore) + QString::number(static_cast<int>(level * 100)) +
           QString::fromUtf8(setVolumeAfter);
}

} // namespace tarnwick::scripts
