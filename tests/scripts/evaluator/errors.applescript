try
    error "Oops" number 42
on error msg number n
    log {msg, n} -- expect: {"Oops", 42}
end try
try
    error "Just words"
on error msg number n from f to t partial result p
    log {msg, n} -- expect: {"Just words", -2700}
end try
try
    error number -128
on error msg
    log msg -- expect: User canceled.
end try
try
    log missingVariable
on error number n
    log n -- expect: -2753
end try
try
    error "swallowed"
end try
try
    try
        error "inner" number 1
    on error msg number n
        error msg & " again" number n + 1
    end try
on error msg number n
    log {msg, n} -- expect: {"inner again", 2}
end try
-- an `on error` for one number lets every other error pass
try
    try
        error "passed" number 5
    on error number -128
        log "no"
    end try
on error msg number 5
    log msg -- expect: passed
end try
try
    error number -128
on error number -128
    log "cancelled" -- expect: cancelled
end try
ignoring application responses
    tell application "Music"
        play "nothing of the kind" -- expect: play nothing of the kind
    end tell
    considering application responses
        try
            tell application "Music" to play 5
        on error number n
            -- expect: play 5
            log n -- expect: -1728
        end try
    end considering
end ignoring
repeat with i from 1 to 3
    try
        if i = 2 then error "two"
        log i -- expect: 1
    on error
        exit repeat
    end try
end repeat
log i -- expect: 2
-- what a `tell` and a `considering` have changed is as before when an error has passed through
try
    tell {7, 8}
        considering case
            error "out"
        end considering
    end tell
end try
log "a" = "A" -- expect: true
try
    log item 1 of it
on error msg
    log msg -- expect: Can’t get item 1 of «script».
end try
error "The end" number 7 -- expect error at 1: The end (7)
