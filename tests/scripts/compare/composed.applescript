-- how accents are composed does not count: the texts on the left are decomposed
set cafe to "café"
log {cafe = "café", cafe contains "É", cafe ends with "fé", cafe starts with "café", "é" is in cafe, cafe begins with "cafe"} -- expect: {true, true, true, true, true, false}
log {"é" contains "é", "x̂y" contains "x", cafe contains "", cafe ends with "", "" contains cafe, "caf" starts with cafe} -- expect: {true, false, true, true, false, false}
log {"é" < "f", "é" < "é", "é" > "d"} -- expect: {false, false, true}
log {"a" & return & linefeed & "é" contains linefeed, "🎵é" ends with "🎵é"} -- expect: {true, true}
considering case
    log {cafe contains "É", cafe contains "é", cafe ends with "É"} -- expect: {false, true, false}
end considering
log {offset of "é" in cafe, offset of "x" in "ééx"} -- expect: {4, 3}
set AppleScript's text item delimiters to "É"
log text items of "aébécd" -- expect: {"a", "b", "cd"}
set AppleScript's text item delimiters to {"e", "b"}
log text items of "éebé" = {"é", "", "é"} -- expect: true
log length of text item 1 of "éex" -- expect: 1
set AppleScript's text item delimiters to ""
tell application "Music"
    log name of every track of library playlist 1 whose name ends with "ó" -- expect: {}
    log name of every track of library playlist 1 whose album is "L'ALTRA \"VOLTA\"" and artist starts with "a" -- expect: {"Say \"x\" \\ y"}
end tell
