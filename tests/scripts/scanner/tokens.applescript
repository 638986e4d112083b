log "a" -- expect: a
log "b" # expect nothing of this kind of comment (* not even this
-- expect: b
(* a comment (* inside of another *) goes on *) log "c" -- expect: c
log "one " & ¬
	"two" -- expect: one two
log "quote \" backslash \\ tab \t." -- expect: quote " backslash \ tab 	.
set |strange name| to 3
log |STRANGE NAME| -- expect: 3
set |a\|b| to 4
log |a\|b| -- expect: 4
LOG "case of words does not matter" -- expect: case of words does not matter
log {1, 1.5, .5, 1e3, 2.5E-3, 12345678901234567890} -- expect: {1, 1.5, 0.5, 1000.0, 0.0025, 1.23456789012E+19}
log "due" & "
righe" is "due
righe" -- expect: true
log {3 ≤ 4, 3 <= 4, 4 ≥ 3, 3 ≠ 4, 3 /= 4, 6 ÷ 4} -- expect: {true, true, true, true, true, 1.5}
-- next script
log "\q" -- expect error at 5: Expected “"” but found unknown token. (-2741)
-- next script
log 12abc -- expect error at 5: Expected end of line but found identifier. (-2741)
-- next script
log 1e999 -- expect error at 5: The number is too large. (-2741)
-- next script
log 1 ~ 2 -- expect error at 7: Expected expression but found unknown token. (-2741)
-- next script
log "a" ¬ "b" -- expect error at 9: Expected expression but found unknown token. (-2741)
