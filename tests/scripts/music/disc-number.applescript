tell application "Music"
    if player state is playing or player state is paused then
        set discNumber to disc number of current track
        return discNumber
    else
        return missing value
    end if
end tell
-- expect reply: 1
-- next script
tell application "Music"
    if player state is playing or player state is paused then
        set discNumber to disc number of current track
        return discNumber
    else
        return missing value
    end if
end tell
-- given: stopped
-- expect reply: missing value
