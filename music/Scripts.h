#pragma once

#include <QString>

/// The script texts that are sent to Music, exactly as they are sent.
namespace tarnwick::scripts {

/// Replies with a list of 20 items about the current track, the player and the album's tracks.
const QString& nowPlaying();

/// Replies with a list of {disc number, {{track number, title}, …}}, or with a text when nothing plays.
const QString& tracksByDisc();

/// Starts Music when it does not run; the reply means nothing.
const QString& playPause();
const QString& nextTrack();
const QString& previousTrack();

/// Replies with a list of texts.
const QString& playlistNames();

/// Replies with the name of the playlist that contains the current track, or "".
const QString& currentPlaylist();

/// Replies with the POSIX path of the current track's file, or "".
const QString& trackLocation();

/// Replies with an integer, or missing value when nothing plays.
const QString& discNumber();

/// Replies with an integer from 0 to 100.
const QString& getVolume();

/// Both reply with the shuffle setting as it is afterwards.
const QString& toggleShuffle();
const QString& getShuffle();

/// Starts Music when it does not run, waits 2 seconds and plays the playlist "Musica".
const QString& startupPlaylist();

/// Plays the first track of the library with this title and album. When there is none the text shows
/// a dialog of its own and ends without an error.
QString playTitle(const QString& title, const QString& album);

/// Plays the playlist; replies with the message as a text when Music refuses.
QString playPlaylist(const QString& name);

/// `seconds` from the beginning of the track.
QString setPosition(double seconds);

const QString& stop();

/// `level` is a fraction from 0 to 1; the whole percentage below it is sent.
QString setVolume(double level);

} // namespace tarnwick::scripts
