tell application "Music"
    set playlistNames to name of every user playlist
    return playlistNames
end tell
-- expect reply: {"Musica", "Jazz \"live\""}
