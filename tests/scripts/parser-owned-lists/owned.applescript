tell application "Music"
    set {n, a} to {name, artist} of current track
    log {n, a} -- expect: {"Uno", "Aria"}
    log {name, track number} of every track of library playlist 1 whose album is "PRIMA" -- expect: {{"Due", "Uno", "Zero", "Fine"}, {2, 1, 3, 1}}
    log {name of container, data of artwork 1} of current track -- expect: {"Musica", «data tdta636F766572»}
    log name of {track 1, last track} of library playlist 1 -- expect error at 9: Can’t get name of {track 1, last track} of library playlist 1. (-1728)
end tell
-- next script
-- the owner is asked for once, also where it is another one each time
property asked : 0
on pick()
    set asked to asked + 1
    return {a:asked, tags:{1, 2}}
end pick
log {a, length, item 2 of tags} of pick() -- expect: {1, 2, 2}
log asked -- expect: 1
-- next script
set r to {a:1, b:{c:2}}
log {{a} of r, {c} of b of r, {c of b} of r, {class, length} of {1, 2}, {item 1, items 1 thru 2} of {5, 6}} -- expect: {{1}, {2}, {2}, {list, 2}, {5, {5, 6}}}
set {a, b} of r to {b, a} of r
log r -- expect: {a:{c:2}, b:1}
repeat with each in {a, b} of r
    log contents of each -- expect: {c:2}
end repeat
-- expect: 1
-- next script
log {1, 2} of {a:1} -- expect error at 6: Expected property but found expression. (-2741)
