#pragma once

#include "script/values/Terminology.h"

/// The words that scripts use for music.
namespace tarnwick::players::terms {

using script::term;
using script::Term;

// Classes
inline constexpr Term Track = term("cTrk");
inline constexpr Term Playlist = term("cPly");
inline constexpr Term LibraryPlaylist = term("cLiP");
inline constexpr Term UserPlaylist = term("cUsP");
inline constexpr Term Artwork = term("cArt");

// Properties of the application
inline constexpr Term PlayerState = term("pPlS");
inline constexpr Term PlayerPosition = term("pPos");
inline constexpr Term SoundVolume = term("pVol");
inline constexpr Term ShuffleEnabled = term("pShf");
inline constexpr Term CurrentTrack = term("pTrk");
inline constexpr Term CurrentPlaylist = term("pPla");

// Properties of a track
inline constexpr Term Artist = term("pArt");
inline constexpr Term Album = term("pAlb");
inline constexpr Term Genre = term("pGen");
inline constexpr Term Year = term("pYr ");
inline constexpr Term Comment = term("pCmt");
inline constexpr Term Grouping = term("pGrp");
inline constexpr Term TrackKind = term("pKnd");
inline constexpr Term TrackNumber = term("pTrN");
inline constexpr Term DiscNumber = term("pDsN");
inline constexpr Term DiscCount = term("pDsC");
inline constexpr Term Compilation = term("pAnt");
inline constexpr Term Duration = term("pDur");
inline constexpr Term BitRate = term("pBRt");
inline constexpr Term SampleRate = term("pSRt");
inline constexpr Term Size = term("pSiz");
inline constexpr Term Location = term("pLoc");
inline constexpr Term Container = term("ctnr");

// Properties of an artwork
inline constexpr Term Data = term("pPCT");
inline constexpr Term RawData = term("pRaw");

// Enumerators of the player state
inline constexpr Term Playing = term("kPSP");
inline constexpr Term Paused = term("kPSp");
inline constexpr Term Stopped = term("kPSS");

// Commands
inline constexpr Term Play = term("Play");
inline constexpr Term Pause = term("Paus");
inline constexpr Term PlayPause = term("PlPs");
inline constexpr Term Stop = term("Stop");
inline constexpr Term NextTrack = term("Next");
inline constexpr Term PreviousTrack = term("Prev");
inline constexpr Term BackTrack = term("Back");

/// How scripts spell all of these; and words of the application elsewhere that nothing here provides, which
/// are known so that an error says their name.
const script::Terminology& music();

} // namespace tarnwick::players::terms
