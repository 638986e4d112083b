set l to {1, 2, 3, 4}
log {item 2 of l, item -1 of l, first item of l, last item of l, second item of l, middle item of l, some item of l} -- expect: {2, 4, 1, 4, 2, 2, 4}
log {items 2 thru 3 of l, items 2 through -1 of l, every item of l, rest of l, reverse of l, items 3 thru 2 of l} -- expect: {{2, 3}, {2, 3, 4}, {1, 2, 3, 4}, {2, 3, 4}, {4, 3, 2, 1}, {2, 3}}
log {count l, count of l, number of items of l, length of l, count items of l, (count l) - 1, length of "abc", count of "è"} -- expect: {4, 4, 4, 4, 4, 3, 3, 1}
log {item 2 of "abc", character 1 of "abc", first character of "abc", characters of "ab", text 2 thru 3 of "abcd", text 2 thru -1 of "abcd"} -- expect: {"b", "a", "a", {"a", "b"}, "bc", "bcd"}
log {words of "It is, I'm told, true.", word 2 of "due parole", last word of "due parole", words 1 thru 2 of "a b c"} -- expect: {{"It", "is", "I'm", "told", "true"}, "parole", "parole", {"a", "b"}}
log {paragraphs of ("a" & linefeed & "b" & return & "c"), paragraph 2 of "x
y", count paragraphs of ""} -- expect: {{"a", "b", "c"}, "y", 1}
log {characters of "é🎵x", count characters of "é🎵x"} -- expect: {{"é", "🎵", "x"}, 3}
log {l's item 3, item 1 of l's items 2 thru 3, item (1 + 1) of l} -- expect: {3, 2, 2}
set r to {name:"n", size:2, |odd key|:3}
log {name of r, r's size, |odd key| of r, item 1 of r, count r} -- expect: {"n", 2, 3, "n", 3}
set size of r to 5
log r -- expect: {name:"n", size:5, odd key:3}
set last item of l to "z"
set item -2 of l to "y"
log l -- expect: {1, 2, "y", "z"}
log {words of "", characters of "", every item of {}, rest of {1}} -- expect: {{}, {}, {}, {}}
log item 9 of l -- expect error at 5: Can’t get item 9 of {1, 2, "y", "z"}. (-1728)
-- next script
log item 0 of {1} -- expect error at 5: Can’t get item 0 of {1}. (-1728)
-- next script
log items 2 thru 5 of {1, 2} -- expect error at 5: Can’t get items 2 thru 5 of {1, 2}. (-1728)
-- next script
log last item of {} -- expect error at 5: Can’t get item -1 of {}. (-1728)
-- next script
log item 1 of 5 -- expect error at 5: Can’t get item 1 of 5. (-1728)
-- next script
log nothing of {a:1} -- expect error at 5: Can’t get nothing of {a:1}. (-1728)
-- next script
log rest of {} -- expect error at 5: Can’t get rest of {}. (-1728)
-- next script
set item 1 of "abc" to "x" -- expect error at 5: Can’t set item 1 of "abc" to "x". (-10006)
-- next script
set 3 to 4 -- expect error at 5: Can’t set 3 to 4. (-10006)
