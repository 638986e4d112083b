tell application "Music"
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
end tell
-- expect reply: {"Uno", "Aria", "Prima", 2001, 1, 1, 2, "Gruppo", "Apple Lossless audio file", missing value, «data tdta636F766572», "playing", 245.5, 12.5, {"Due", "Uno", "Zero", "Fine"}, {200.0, 245.5, 10.0, 1.2345E+4}, "Pop", 1024, 30000000000, 44100}
-- next script
tell application "Music"
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
end tell
-- given: paused
-- expect reply: {"Uno", "Aria", "Prima", 2001, 1, 1, 2, "Gruppo", "Apple Lossless audio file", missing value, «data tdta636F766572», "paused", 245.5, 12.5, {"Due", "Uno", "Zero", "Fine"}, {200.0, 245.5, 10.0, 1.2345E+4}, "Pop", 1024, 30000000000, 44100}
-- next script
tell application "Music"
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
end tell
-- given: no facts
-- expect reply: {"Uno", "Aria", "Prima", "0", 1, 1, 0, "Gruppo sconosciuto", "Formato sconosciuto", "Nessun commento", missing value, "playing", 245.5, 12.5, {"Due", "Uno", "Zero", "Fine"}, {200.0, 245.5, 10.0, 1.2345E+4}, "Genere sconosciuto", 0, 0, 0}
-- next script
tell application "Music"
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
end tell
-- given: stopped
-- expect reply: {"", "", "", "", 0, 0, 0, "Gruppo sconosciuto", "", "Nessun commento", missing value, "stopped", 0, 0, {}, {}, "Genere sconosciuto", 0, 0, 0}
