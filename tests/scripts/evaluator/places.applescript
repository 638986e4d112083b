-- an error is at the expression that it comes from
return {1, 2} < {1, 3} -- expect error at 8: Can’t make {1, 2} into type number. (-1700)
-- next script
log 1 + (length of 5) -- expect error at 10: Can’t get the pieces of 5. (-1728)
-- next script
if true and 3 then log 1 -- expect error at 13: Can’t make 3 into type boolean. (-1700)
-- next script
if true and {1, 2} < 3 then log 1 -- expect error at 13: Can’t make {1, 2} into type number. (-1700)
-- next script
set l to {1}
log item ("x" & 1) of l -- expect error at 11: Can’t make "x1" into type integer. (-1700)
-- next script
log - "x" -- expect error at 5: Can’t make "x" into type number. (-1700)
-- next script
property one : 1
property broken : {1, 2} < 3 -- expect error at 19: Can’t make {1, 2} into type number. (-1700)
-- next script
set l to {}
set end of l to l
repeat 1 times
    return l -- expect error at 5: Stack overflow. (-2706)
end repeat
-- next script
set l to {}
set end of l to l
get l -- expect error at 1: Stack overflow. (-2706)
-- next script
tell application "Music"
    -- expect: play Musica
    play "Musica" -- expect error at 10: Music got an error: Can’t get "Musica". (-1728)
end tell
-- next script
tell application "Music"
    -- expect: rewind
    rewind -- expect error at 5: Music got an error: The application doesn’t understand “rewind”. (-1708)
end tell
