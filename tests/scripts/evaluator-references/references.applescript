tell application "Music"
    log {name, running, player state, player state as text, class of current track, name of it} -- expect: {"Music", true, playing, "playing", track, "Music"}
    log name of track 2 of library playlist 1 -- expect: Uno
    log name of tracks 2 thru 3 of library playlist 1 -- expect: {"Uno", "Zero"}
    log {name of first track of library playlist 1, name of last track of library playlist "Library"} -- expect: {"Due", "Say \"x\" \\ y"}
    log name of (middle track of library playlist 1) & name of some track of library playlist 1 -- expect: ZeroSay "x" \ y
    log {count tracks of library playlist 1, count of (every track of library playlist 1), number of tracks of library playlist 1} -- expect: {5, 5, 5}
    log count (every track of library playlist 1 whose album is "prima") -- expect: 4
    log name of every track of library playlist 1 whose album is "Prima" and artist is not "Aria" -- expect: {"Zero"}
    log name of every track of library playlist 1 whose album is "PRIMA" and disc number is 2 -- expect: {"Fine"}
    log name of every track of library playlist 1 whose album is "none" or name is "zero" -- expect: {"Zero"}
    log name of every track of library playlist 1 whose track number > 1 or disc number = 2 -- expect: {"Due", "Zero", "Fine"}
    log name of (tracks of library playlist 1 where its name starts with "u" or name contains "ERO") -- expect: {"Uno", "Zero"}
    log name of every track of library playlist 1 whose compilation -- expect: {"Say \"x\" \\ y"}
    log name of every track of library playlist 1 whose not compilation and name is in {"due", "FINE"} -- expect: {"Due", "Fine"}
    log name of every track of library playlist 1 whose 1 < track number -- expect: {"Due", "Zero"}
    log name of every track of library playlist 1 whose name does not contain "n" and duration ≤ 200 -- expect: {"Due", "Zero", "Say \"x\" \\ y"}
    log name of every track of library playlist 1 whose track number = disc number -- expect: {"Uno", "Say \"x\" \\ y"}
    log name of every track of library playlist 1 whose length of name is 3 -- expect: {"Due", "Uno"}
    log name of second track of library playlist 1 whose album is album of current track -- expect: Uno
    log name of every track of library playlist 1 whose album is "none" -- expect: {}
    log {exists playlist "Musica", exists playlist "None", current track exists} -- expect: {true, false, true}
    log {name of container of current track, current track's artist, track 1 of library playlist 1 = track 1 of library playlist 1, container of current track is container of current track} -- expect: {"Musica", "Aria", true, true}
    log every user playlist -- expect: {user playlist "Musica", user playlist "Jazz \"live\""}
    tell current track
        log {name, its album, artist of it} -- expect: {"Uno", "Prima", "Aria"}
    end tell
    play current track once true -- expect: play current track once true
    set sound volume to 3 + 4 -- expect: set sound volume to 7
    set x to every track of library playlist 1 whose disc number is 2
    repeat with t in x
        log name of t & "!" -- expect: Fine!
        play t -- expect: play track 4 of library playlist 1
    end repeat
    considering case
        log name of every track of library playlist 1 whose album is "PRIMA" -- expect: {"Fine"}
    end considering
end tell
tell application "music" to log name of current track -- expect: Uno
log application "Music" is running -- expect: true
if application "Music" is not running then log "no"
tell application "Music" to set t to current track
log name of t -- expect: Uno
log describe(t) -- expect: Uno by Aria
on describe(t)
    using terms from application "Music"
        return name of t & " by " & artist of t
    end using terms from
end describe
-- next script
tell application "Music"
    log data of artwork 2 of current track -- expect error at 17: Music got an error: Can’t get artwork 2 of current track. (-1728)
end tell
-- next script
tell application "Music" -- given: no track
    log name of current track -- expect error at 17: Music got an error: Can’t get current track. (-1728)
end tell
-- next script
tell application "Music"
    -- expect: set current track to 5
    set current track to 5 -- expect error at 9: Music got an error: Can’t set current track. (-10006)
end tell
-- next script
tell application "Music"
    log track missingIndex of library playlist 1 -- expect error at 15: The variable missingIndex is not defined. (-2753)
end tell
-- next script
tell application "Music"
    log sound volume -- expect error at 9: Music got an error: Application isn’t running. (-600)
    -- given: not running
end tell
-- next script
tell application "Music"
    log track 0 of library playlist 1 -- expect error: Can’t get track 0 of library playlist 1. Invalid index. (-1719)
end tell
-- next script
tell application "Music"
    log track 9 of library playlist 1 -- expect error at 9: Music got an error: Can’t get track 9 of library playlist 1. (-1728)
end tell
-- next script
-- the words of an application mean nothing outside of its tell
tell application "Music" to set t to current track
log artist of t -- expect error at 5: Can’t get artist of t. (-1728)
