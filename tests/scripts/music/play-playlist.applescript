tell application "Music"
    try
        play playlist "Jazz \"live\""
    on error errMsg
        return errMsg
    end try
end tell
-- expect: play playlist "Jazz "live""
-- next script
tell application "Music"
    try
        play playlist "Manca"
    on error errMsg
        return errMsg
    end try
end tell
-- expect reply: "Music got an error: Can’t get playlist \"Manca\"."
