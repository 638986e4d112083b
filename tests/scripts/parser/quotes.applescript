tell application "Music"
    play playlist "Jazz "live"" -- expect error at 26: Expected end of line but found identifier “live”. (-2741)
end tell
