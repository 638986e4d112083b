tell application "Music"
    log {running, it is running, it is not running, not (it is running), it isn't running} -- expect: {true, true, false, false, false}
    if it is running then log "runs" -- expect: runs
    log {it is it, it is equal to running, class of it is application} -- expect: {true, false, true}
end tell
log {"abc" doesn't contain "x", 1 doesn't equal 1, 1 doesn’t equal 2, "b" doesn't start with "b"} -- expect: {true, false, true, false}
set appName to "Music"
tell application appName
    log {name, running, it is running} -- expect: {"Music", true, true}
end tell
log application appName is running -- expect: true
using terms from application "Music"
    tell application appName to log name of current track -- expect: Uno
end using terms from
tell application ("Mu" & "sic") to log name -- expect: Music
log {round 2.5, round 3.5, round -2.5, round (2.4), round "2.6", round 7, round 1.0E+30} -- expect: {2, 4, -2, 2, 3, 7, 1.0E+30}
log {round 2.1 rounding up, round -2.1 rounding up, round 2.9 rounding down, round -2.1 rounding down} -- expect: {3, -2, 2, -3}
log {round -2.9 rounding toward zero, round 2.5 rounding to nearest, round 2.5 rounding as taught in school} -- expect: {-2, 2, 3}
log {offset of "b" in "abc", offset of "C" in "abc", offset of "x" in "abc", offset of "" in "abc", offset of 2 in 123} -- expect: {2, 3, 0, 0, 2}
considering case
    log offset of "C" in "abcC" -- expect: 4
end considering
set part to "c"
set whole to {text:"abc"}
log (offset of part in |text| of whole) + 1 -- expect: 4
log offset of {offset:5} -- expect: 5
set round to 3
log round -- expect: 3
-- next script
-- a handler of the script's own comes before the command
log round(2.5) -- expect: own 2.5
on round(x)
    return "own " & x
end round
-- next script
on twice(round)
    return round * 2
end twice
log twice(4) -- expect: 8
-- next script
tell application "Music" -- given: not running
    if it is not running then log "asleep" -- expect: asleep
    log {it is running, not (it is running)} -- expect: {false, true}
end tell
-- next script
set appName to "Nobody"
tell application appName to log 1 -- expect error at 6: Can’t get application "Nobody". (-1728)
-- next script
set appName to "Music"
tell application appName
    log current track -- expect error at 17: Expected end of line but found identifier “track”. An application’s own words need its name in the “tell”, or “using terms from”. (-2741)
end tell
-- next script
log current date -- expect error at 5: “current date” is not supported. (-2741)
-- next script
do shell script "ls" -- expect error at 1: “do shell script” is not supported. (-2741)
-- next script
choose from list {1} -- expect error at 1: “choose from list” is not supported. (-2741)
-- next script
run script "x" -- expect error at 1: “run script” is not supported. (-2741)
-- next script
log application id "com.example" -- expect error at 5: “application id” is not supported. (-2741)
-- next script
round 2.5 rounding sideways -- expect error at 20: Expected “up”, “down”, “toward zero”, “to nearest” or “as taught in school” but found identifier “sideways”. (-2741)
-- next script
log offset of 1 in {2, 1} -- expect error at 5: Can’t make {2, 1} into type text. (-1700)
-- next script
return item of {1} -- expect error at 13: Expected index but found “of”. (-2741)
-- next script
exit repeat -- expect error at 1: Expected “repeat” around “exit repeat”. (-2741)
-- next script
repeat 2 times
    stopHere()
end repeat
on stopHere()
    exit repeat -- expect error at 5: Expected “repeat” around “exit repeat”. (-2741)
end stopHere
