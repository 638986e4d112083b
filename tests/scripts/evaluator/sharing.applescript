set a to {1, 2}
set b to a
copy a to c
set end of b to 3
log {a, b, c} -- expect: {{1, 2, 3}, {1, 2, 3}, {1, 2}}
set nested to {{1}, {2}}
copy nested to deep
set item 1 of item 1 of deep to "changed"
log {nested, deep} -- expect: {{{1}, {2}}, {{"changed"}, {2}}}
set r to {name:"x", tags:{1}}
set s to r
set name of s to "y"
set end of tags of r to 2
log {r, s} -- expect: {{name:"y", tags:{1, 2}}, {name:"y", tags:{1, 2}}}
-- the loop variable is a reference to the item, not the item
set l to {1, {2}, 3}
repeat with x in l
    if class of x is list then set end of x to "in"
    if x = 3 then log "a reference is no number"
    if contents of x = 3 then log "found" -- expect: found
    if contents of x = 1 then set contents of x to "one"
end repeat
log l -- expect: {"one", {2, "in"}, 3}
log x + 1 -- expect: 4
set y to x
set item 3 of l to 10
log y + 1 -- expect: 11
set l to {}
log (y as integer) -- expect: 10
set short to {1, 2}
repeat with x in short
    set short's item 1 to 0
end repeat
set beginning of short to "first"
log short -- expect: {"first", 0, 2}
repeat with c in "ab"
    log c -- expect: a
end repeat
-- expect: b
set item 4 of short to 5 -- expect error at 5: Can’t set item 4 of short. Invalid index. (-1719)
