tell application "Music"
    if player state is playing or player state is paused then
        next track
    end if
end tell
-- expect: next track
-- next script
tell application "Music"
    if player state is playing or player state is paused then
        previous track
    end if
end tell
-- given: paused
-- expect: previous track
-- next script
tell application "Music"
    if player state is playing or player state is paused then
        next track
    end if
end tell
-- given: stopped
