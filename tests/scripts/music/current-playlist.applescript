tell application "Music"
    if player state is playing or player state is paused then
        set thePlaylist to container of current track
        set playlistName to name of thePlaylist
        return playlistName
    else
        return ""
    end if
end tell
-- expect reply: "Library"
-- next script
tell application "Music"
    if player state is playing or player state is paused then
        set thePlaylist to container of current track
        set playlistName to name of thePlaylist
        return playlistName
    else
        return ""
    end if
end tell
-- given: stopped
-- expect reply: ""
