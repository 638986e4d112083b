tell application "Music"
    if not running then
        launch
        delay 0.1
    end if
    if player state is paused or player state is stopped then
        play
    else if player state is playing then
        pause
    end if
end tell
-- expect: pause
-- next script
tell application "Music"
    if not running then
        launch
        delay 0.1
    end if
    if player state is paused or player state is stopped then
        play
    else if player state is playing then
        pause
    end if
end tell
-- given: paused
-- expect: play
-- next script
tell application "Music"
    if not running then
        launch
        delay 0.1
    end if
    if player state is paused or player state is stopped then
        play
    else if player state is playing then
        pause
    end if
end tell
-- given: not running
-- expect: launch
-- expect: delay: 0.1
-- expect: play
