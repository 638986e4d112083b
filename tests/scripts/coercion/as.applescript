log {1 as text, 1.0 as text, true as string, missing value as text, {1, "a", {2}} as text} -- expect: {"1", "1.0", "true", "missing value", "1a2"}
log {"12" as integer, "1.5" as real, " 7 " as number, "1.0" as number, 2.5 as integer, 3.5 as integer, -1.6 as integer} -- expect: {12, 1.5, 7, 1.0, 2, 4, -2}
log {true as integer, 0 as boolean, "TRUE" as boolean, {5} as integer, 3 as real} -- expect: {1, false, true, 5, 3.0}
log {3 as list, {1} as list, {a:1, b:2} as list, "x" as list} -- expect: {{3}, {1}, {1, 2}, {"x"}}
log {0.1, 100.0, 9999.5, 10000.0, 12345.678, 0.0001, 1.0E-5, 1.0E+20, 1 / 3, -2.5} -- expect: {0.1, 100.0, 9999.5, 1.0E+4, 1.2345678E+4, 1.0E-4, 1.0E-5, 1.0E+20, 0.333333333333, -2.5}
log POSIX path of ("Disk:Music:a/b.mp3" as alias) -- expect: /Music/a/b.mp3
log {POSIX path of "/a/b", POSIX file "/a/b", quoted form of "it's"} -- expect: {"/a/b", alias "/a/b", "'it'\\''s'"}
log {class of 1, class of 1.5, class of "x", class of {}, class of {a:1}, class of true, class of missing value} -- expect: {integer, real, text, list, record, boolean, class}
log {class of 1 is integer, class of "x" is string, class of 1 is text} -- expect: {true, true, false}
set AppleScript's text item delimiters to ", "
log {1, 2, 3} as text -- expect: 1, 2, 3
log "x" & {1, 2} -- expect: x1, 2
log text items of "a, b,c" -- expect: {"a", "b,c"}
set AppleScript's text item delimiters to {"-", "+"}
log text items of "a-b+c" -- expect: {"a", "b", "c"}
log text item -1 of "a-b+c" -- expect: c
set AppleScript's text item delimiters to ""
log text item delimiters of AppleScript & "." -- expect: .
log "abc" as integer -- expect error at 5: Can’t make "abc" into type integer. (-1700)
-- next script
log {1, 2} as integer -- expect error at 5: Can’t make {1, 2} into type integer. (-1700)
-- next script
log {a:1} as text -- expect error: Can’t make {a:1} into type text. (-1700)
-- next script
log "1e999" as number -- expect error: Can’t make "1e999" into type number. (-1700)
-- next script
log 1.0E+30 as integer -- expect error: Can’t make 1.0E+30 into type integer. (-1700)
-- next script
log "nan" as real -- expect error: Can’t make "nan" into type real. (-1700)
