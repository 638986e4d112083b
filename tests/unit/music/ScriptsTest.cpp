#include "music/Scripts.h"

#include <QCryptographicHash>
#include <gmock/gmock.h>

namespace tarnwick::scripts {
namespace {

QByteArray digest(const QString& text) {
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
}

// The texts are a wire format: a blank that an editor drops is a fault that nothing else would show.
TEST(Scripts, AreSentToTheLetter) {
    const struct {
        const char* name;
        QString text;
        const char* digest;
    } rows[] = {
        {"nowPlaying", nowPlaying(), "a9383dbaa55aadb3"},
        {"tracksByDisc", tracksByDisc(), "bf496284728752f4"},
        {"playPause", playPause(), "183707b6ee4e2f2e"},
        {"nextTrack", nextTrack(), "660038e96bb4d2e4"},
        {"previousTrack", previousTrack(), "62ea8cbb292ee62c"},
        {"playlistNames", playlistNames(), "4ece28405ba3957b"},
        {"currentPlaylist", currentPlaylist(), "1c6ed5356365df75"},
        {"trackLocation", trackLocation(), "892834cb3eaab7de"},
        {"discNumber", discNumber(), "70484e1b9647a29c"},
        {"getVolume", getVolume(), "31e9dc85b4eaa4b8"},
        {"toggleShuffle", toggleShuffle(), "9ed4b2100794e1e6"},
        {"getShuffle", getShuffle(), "355c969cbc0809c0"},
        {"startupPlaylist", startupPlaylist(), "a02755277ddaa8f0"},
        {"playTitle", playTitle("T", "A"), "81e8c05c52d9b0ea"},
        {"playPlaylist", playPlaylist("P"), "93a8cea0eab4474a"},
        {"setVolume", setVolume(0.42), "890140f90cd13232"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(digest(row.text), row.digest) << row.name;
}

TEST(Scripts, BackslashesOfAPlaylistAreSentAsTheyAre) {
    EXPECT_TRUE(playPlaylist(R"~(Rock \ "n" Roll)~").contains(R"~(play playlist "Rock \ \"n\" Roll")~"));
}

} // namespace
} // namespace tarnwick::scripts
