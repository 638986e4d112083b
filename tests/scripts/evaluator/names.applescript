-- what the script itself has is `my` everywhere, and a global is seen by the handlers after it
global counter
set counter to 1
set x to 3
set artist to "own"
log {my x, my X, x of me, raised(), x} -- expect: {3, 3, 3, 4, 4}
tell application "Music" to log my artist -- expect: own
log {next(), next(), counter, hidden(7), counter, owned()} -- expect: {2, 3, 3, {7, 9}, 3, 5}
on raised()
    set my x to (my x) + 1
    return my x
end raised
on next()
    set counter to counter + 1
    return counter
end next
on hidden(counter)
    return {counter, other()}
end hidden
on other()
    local counter
    set counter to 9
    return counter
end other
on owned()
    set y to 5
    return y
end owned
-- next script
-- a handler before the declaration has its own
on before()
    set g to 5
    return g
end before
global g
set g to 1
log {before(), g} -- expect: {5, 1}
-- next script
-- the variables of `on run` are its own
on run
    set x to 1
    log my x -- expect error at 12: Can’t get x. (-1728)
end run
