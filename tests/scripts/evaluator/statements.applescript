if 1 > 2 then
    log "no"
else if 2 > 1 then
    log "else if" -- expect: else if
else
    log "no"
end if
if false then log "no"
if true then log "one line" -- expect: one line
if false then log "no" else log "other" -- expect: other
repeat 2 times
    log "twice" -- expect: twice
end repeat
-- expect: twice
repeat with i from 3 to 1 by -2
    log i -- expect: 3
    set i to 100
end repeat
-- expect: 1
repeat with i from 2 to 1
    log "never"
end repeat
set n to 0
repeat while n < 2
    set n to n + 1
end repeat
repeat until n = 5
    set n to n + 1
end repeat
log n -- expect: 5
repeat
    set n to n + 1
    if n > 7 then exit repeat
end repeat
log n -- expect: 8
repeat with a in {1, 2}
    repeat with b in {"x", "y"}
        if contents of b is "y" then exit repeat
        log (a as text) & b -- expect: 1x
    end repeat
end repeat
-- expect: 2x
set {p, q} to {1, 2}
set {p, q} to {q, p}
log {p, q} -- expect: {2, 1}
tell {1, 2, 3}
    log item 2 -- expect: 2
    log count of it -- expect: 3
end tell
tell 5 to log it + 1 -- expect: 6
considering case
    log "a" = "A" -- expect: false
    ignoring case
        log "a" = "A" -- expect: true
    end ignoring
end considering
with timeout of 10 seconds
    log "a" = "A" -- expect: true
end timeout
log "display" -- expect: display
set answer to display dialog "Sure?" buttons {"No", "Yes"} default button 2 with icon caution -- expect: dialog: Sure?
log button returned of answer -- expect: OK
log text returned of (display dialog "Name?" default answer "Anna") -- expect: dialog: Name?
-- expect: Anna
delay 0.25 -- expect: delay: 0.25
delay "1.5" -- expect: delay: 1.5
-- next script
-- the last value is the reply, and `result` is it in between
3 + 4
set x to result * 2
-- expect reply: 14
-- next script
return
-- next script
on run
    return "run"
end run
-- expect reply: "run"
-- next script
log undefinedThing -- expect error at 5: The variable undefinedThing is not defined. (-2753)
-- next script
set x to nothing() -- expect error: No result was returned from “nothing()”. (-2753)
on nothing()
end nothing
-- next script
if 3 then log 1 -- expect error: Can’t make 3 into type boolean. (-1700)
