tell application "Music"
    if player state is not stopped then
        try
            play (first track of library playlist 1 whose name is "Fine" and album is "Prima")
        on error errMsg
            display dialog "Errore: Il brano 'Fine' non è disponibile nell'album 'Prima'."
            log "Errore AppleScript: " & errMsg
        end try
    else
        display dialog "Errore: La riproduzione non è attualmente attiva."
    end if
end tell
-- expect: play track 4
-- next script
tell application "Music"
    if player state is not stopped then
        try
            play (first track of library playlist 1 whose name is "Say \"x\" \\ y" and album is "L'altra \"volta\"")
        on error errMsg
            display dialog "Errore: Il brano 'Say \"x\" \\ y' non è disponibile nell'album 'L'altra \"volta\"'."
            log "Errore AppleScript: " & errMsg
        end try
    else
        display dialog "Errore: La riproduzione non è attualmente attiva."
    end if
end tell
-- expect: play track 5
-- next script
tell application "Music"
    if player state is not stopped then
        try
            play (first track of library playlist 1 whose name is "Manca" and album is "Prima")
        on error errMsg
            display dialog "Errore: Il brano 'Manca' non è disponibile nell'album 'Prima'."
            log "Errore AppleScript: " & errMsg
        end try
    else
        display dialog "Errore: La riproduzione non è attualmente attiva."
    end if
end tell
-- expect: dialog: Errore: Il brano 'Manca' non è disponibile nell'album 'Prima'.
-- expect: Errore AppleScript: Music got an error: Can’t get first track of library playlist 1 whose name is "Manca" and album is "Prima".
-- next script
tell application "Music"
    if player state is not stopped then
        try
            play (first track of library playlist 1 whose name is "Fine" and album is "Prima")
        on error errMsg
            display dialog "Errore: Il brano 'Fine' non è disponibile nell'album 'Prima'."
            log "Errore AppleScript: " & errMsg
        end try
    else
        display dialog "Errore: La riproduzione non è attualmente attiva."
    end if
end tell
-- given: stopped
-- expect: dialog: Errore: La riproduzione non è attualmente attiva.
