log {add of me given a:1} -- expect error at 16: Expected “}” but found “given”. (-2741)
-- next script
property total : 10
global shared
set shared to 1
log factorial(10) -- expect: 3628800
log my add(1, 2) -- expect: 3
bump()
bump()
log {total, shared, my total} -- expect: {12, 3, 12}
set mine to {1, 2}
extend(mine)
log mine -- expect: {1, 2, "more"}
log early(1) -- expect: one
log early(2) -- expect: other
log implicit() -- expect: 6
log ADD(2, 2) -- expect: 4
log depth(200) -- expect: 200
set x to "outer"
log isolated() -- expect: inner
log x -- expect: outer
log add(1) -- expect error at 5: add(1) doesn’t match the parameters of add. (-1721)
on factorial(n)
    if n < 2 then return 1
    return n * factorial(n - 1)
end factorial
to add(a, b)
    return a + b
end add
on depth(n)
    if n = 0 then
        return 0
    else
        return 1 + depth(n - 1)
    end if
end depth
on bump()
    global shared
    set total to total + 1
    set shared to shared + 1
end bump
on extend(aList)
    set end of aList to "more"
end extend
on early(n)
    repeat with i from 1 to 3
        if n = i then
            if n is 1 then return "one"
            exit repeat
        end if
    end repeat
    return "other"
end early
on implicit()
    set y to 2
    y * 3
end implicit
on isolated()
    set x to "inner"
    return x
end isolated
-- next script
-- without `my` a call inside of `tell` goes to the application, which does not know it
tell application "Music"
    log my double(4) -- expect: 8
    try
        log double(4)
    on error msg number n
        log n -- expect: -1708
    end try
end tell
noSuchHandler(1) -- expect error at 1: «script» doesn’t understand the “noSuchHandler” message. (-1708)
on double(n)
    return n * 2
end double
