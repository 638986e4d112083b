tell application "Music"
    if player state is playing or player state is paused then
        set trackPath to (get location of current track) as text
        return POSIX path of trackPath
    else
        return ""
    end if
end tell
-- expect reply: "/music/Uno.flac"
-- next script
tell application "Music"
    if player state is playing or player state is paused then
        set trackPath to (get location of current track) as text
        return POSIX path of trackPath
    else
        return ""
    end if
end tell
-- given: stopped
-- expect reply: ""
