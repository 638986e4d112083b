tell application "Music"
    set shuffle enabled to not shuffle enabled
    return shuffle enabled
end tell
-- expect: set shuffle enabled to true
-- expect reply: true
-- next script
tell application "Music"
    return shuffle enabled
end tell
-- expect reply: false
