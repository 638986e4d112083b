log {"a" = "A", "È" = "è", "a" is not "b", "Ångström" = "ångström", 1 = 1.0, 1 = "1", "1" = 1} -- expect: {true, true, true, true, true, false, false}
log {"10" > 9, 9 < "10", "b" > "A", "a" < "B", 2 > 1.5, "x" comes before "y"} -- expect: {false, true, true, true, true, true}
log {{1, "A"} = {1, "a"}, {1} = {1, 2}, {a:1, b:2} = {b:2, a:1}, {} = {}, missing value = missing value} -- expect: {true, false, true, true, true}
log {3 is equal to 3, 3 equals 3, 3 isn't 3, 3 does not equal 4, 3 is not equal to 3} -- expect: {true, true, false, true, false}
log {3 is less than 4, 3 is not less than 4, 3 is greater than or equal to 3, 3 is less than or equal to 2} -- expect: {true, false, true, false}
log {3 comes after 2, 3 does not come after 2, 2 is not greater than 1} -- expect: {true, false, false}
log {"Hello" contains "ELL", "Hello" starts with "he", "Hello" ends with "LO", "Hello" does not contain "x", "Hello" begins with "x"} -- expect: {true, true, true, true, false}
log {2 is in {1, 2}, {2, 3} is in {1, 2, 3}, {1, 3} is in {1, 2, 3}, 5 is not in {1}, "a" is contained by "cat"} -- expect: {true, true, false, true, true}
log {{1, 2, 3} contains {2, 3}, {1, 2, 3} starts with 1, {1, 2, 3} ends with {2, 3}, {a:1, b:2} contains {b:2}, {{1}, {2}} contains {{2}}} -- expect: {true, true, true, true, true}
log {true and false, true or false, not true, not 1 = 2, true and not false} -- expect: {false, true, false, true, true}
log false and (1 / 0 = 1) -- expect: false
log true or (1 / 0 = 1) -- expect: true
considering case
    log {"a" = "A", "Hello" contains "ELL", "a" is in {"A"}} -- expect: {false, false, false}
end considering
log {1, 2} < 3 -- expect error: Can’t make {1, 2} into type number. (-1700)
