tell application "Music"
    if not running then
        launch
        delay 2
    end if
    play playlist "Musica"
end tell
-- expect: play playlist "Musica"
-- next script
tell application "Music"
    if not running then
        launch
        delay 2
    end if
    play playlist "Musica"
end tell
-- given: not running
-- expect: launch
-- expect: delay: 2
-- expect: play playlist "Musica"
