tell application "Music"
    return sound volume
end tell
-- expect reply: 30
-- next script
tell application "Music"
    set sound volume to 42
end tell
-- expect: set sound volume to 42
-- expect reply: 42
