log (1 + 2 -- expect error at 11: Expected “)” but found end of line. (-2741)
-- next script
if true then
    log 1
end repeat -- expect error at 5: Expected “if” but found “repeat”. (-2741)
-- next script
set x 3 -- expect error at 7: Expected “to” but found number. (-2741)
-- next script
log {1, 2 -- expect error at 10: Expected “}” but found end of line. (-2741)
-- next script
repeat with 3 in {} -- expect error at 13: Expected identifier but found number. (-2741)
-- next script
log 1 log 2 -- expect error at 7: Expected end of line but found identifier “log”. (-2741)
-- next script
end tell -- expect error at 1: Expected expression but found “end”. (-2741)
-- next script
log 3 as elephant -- expect error at 10: Expected class name but found identifier “elephant”. (-2741)
-- next script
set x to  -- expect error at 9: Expected expression but found end of line. (-2741)
-- next script
on broken(a -- expect error at 12: Expected “)” but found end of line. (-2741)
    return a
end broken
-- next script
tell application "Nobody" -- expect error at 6: Can’t get application "Nobody". (-1728)
end tell
-- next script
every elephant -- expect error at 7: Expected class name but found identifier “elephant”. (-2741)
-- next script
tell application "Music"
    log name of every elephant -- expect error at 23: Expected class name but found identifier “elephant”. (-2741)
end tell
-- next script
on run
    log 1
end run
log 2 -- expect error at 1: Expected “on”, “property” or end of script but found identifier “log”. (-2741)
