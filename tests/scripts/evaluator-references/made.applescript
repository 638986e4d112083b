-- `a reference to`, the items of a class, and words that are known and not provided
set l to {1, 2, "c", {4}}
set r to a reference to item 2 of l
set contents of r to 7
log {l, r + 1, class of r} -- expect: {{1, 7, "c", {4}}, 8, integer}
set end of (a reference to item 4 of l) to 5
set all to a ref to l
set item 1 of all to "first"
log l -- expect: {"first", 7, "c", {4, 5}}
log {every text of l, every integer of l, every number of {1, 2.5, "x"}, every list of l, first text of l, last integer of {1, 2, "c"}} -- expect: {{"first", "c"}, {7}, {1, 2.5}, {{4, 5}}, "first", 2}
log {count every integer of {1, 2, "c"}, every boolean of {1}} -- expect: {2, {}}
set a to 3
log a -- expect: 3
tell application "Music"
    set t to a reference to current track
    log name of t -- expect: Uno
    -- expect: back track
    back track -- expect: to 0 s
    log last track of library playlist 1 -- expect: track 5 of library playlist 1
end tell
-- next script
set x to 3
set r to a reference to x -- expect error at 10: Can’t make a reference to x: only to an item of a list, a list, a record or an object. (-1700)
-- next script
log last text of {1} -- expect error at 5: Can’t get last text of {1}. (-1728)
-- next script
log every text of 5 -- expect error at 5: Can’t get every text of 5. (-1728)
-- next script
tell application "Music"
    -- expect: Music got an error: Can’t get mute. -1728
    repeat with n from 1 to 6
        try
            if n = 1 then get mute
            if n = 2 then get album artist of current track
            if n = 3 then get persistent ID of current track
            if n = 4 then get file track 1
            if n = 5 then get name of source 1
            if n = 6 then get selection
        on error msg number m
            log msg & " " & m
        end try
    end repeat
    -- expect: Music got an error: Can’t get album artist of current track. -1728
    -- expect: Music got an error: Can’t get persistent ID of current track. -1728
    -- expect: Music got an error: Can’t get file track 1. -1728
    -- expect: Music got an error: Can’t get source 1. -1728
    -- expect: Music got an error: Can’t get selection. -1728
    -- expect: set mute to true
    set mute to true -- expect error at 9: Music got an error: Can’t set mute. (-10006)
end tell
