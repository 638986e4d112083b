tell application "Music"
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
end sortTracks
-- expect reply: {{1, {{1, "Uno"}, {2, "Due"}}}, {2, {{1, "Fine"}}}}
-- next script
tell application "Music"
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
end sortTracks
-- given: stopped
-- expect reply: "Nessuna traccia in riproduzione o pausa."
