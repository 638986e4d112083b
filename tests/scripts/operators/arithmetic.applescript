log {1 + 2 * 3, (1 + 2) * 3, 7 div 2, -7 div 2, 7 mod 3, -7 mod 3, 7.5 mod 2, 4 / 2, 2 ^ 3, 2 ^ 3 ^ 2, -2 ^ 2} -- expect: {7, 9, 3, -3, 1, -1, 1.5, 2.0, 8.0, 512.0, 4.0}
log {"3" + 4, 1 + 1.0, 7.5 div 2, true + 1} -- expect: {7, 2.0, 3, 2}
log {9223372036854775807 + 1, -9223372036854775807 - 2, 3037000500 * 3037000500} -- expect: {9.22337203685E+18, -9.22337203685E+18, 9.223372037E+18}
log {(-9223372036854775807 - 1) div -1, (-9223372036854775807 - 1) mod -1} -- expect: {9.22337203685E+18, 0}
log "a" & 1 & 2.5 & true -- expect: a12.5true
log {1 & 2, 1 & "a", {1} & 2 & {3}, {a:1} & {a:2, b:3}, "a" & missing value} -- expect: {{1, 2}, {1, "a"}, {1, 2, 3}, {a:1, b:3}, "amissing value"}
log "3 + 4 = " & 3 + 4 -- expect: 3 + 4 = 7
log 1 + 2 as text -- expect: 3
log "a" & 1 as text is "A1" -- expect: true
log 1 / 0 -- expect error: Can’t divide 1 by zero. (-2701)
-- next script
log 5 mod 0 -- expect error: Can’t divide 5 by zero. (-2701)
-- next script
log 10.0 ^ 400 -- expect error: The result of a numeric operation was too large. (-2702)
-- next script
log "x" + 1 -- expect error at 5: Can’t make "x" into type number. (-1700)
