#include "tests/fakes/WebServer.h"
#include "tests/players/MprisFixture.h"

namespace tarnwick {
namespace {

struct WebCoversTest : MprisFixture {
    WebServer web;

    WebCoversTest() { player = makePlayer("fake", playing(metadata("0", "N", "0"))); }

    void play(const QString& title, const QString& album, const QString& artUrl) {
        player->signal({{"Metadata", metadata(title, "N", album, {{"mpris:artUrl", artUrl}})}});
        ASSERT_TRUE(titleBecomes(title));
    }
};

TEST_F(WebCoversTest, AreLoadedOnceForEachAlbum) {
    const QByteArray first = picture(qRgb(1, 2, 3));
    const QByteArray second = picture(qRgb(4, 5, 6));
    web.serve("/art", first);
    start({.cacheFolder = folder.filePath("cache")});
    play("A1", "A", web.url("/art"));
    EXPECT_TRUE(coverBecomes(first));
    play("B", "B", {});
    play("A2", "A", web.url("/art"));
    EXPECT_TRUE(coverBecomes(first));
    EXPECT_EQ(web.requests("/art"), 1) << "a second look needs no network";
    web.serve("/art", second);
    play("C", "C", web.url("/art"));
    EXPECT_TRUE(coverBecomes(second)) << "the same address with another album is another picture";
}

TEST_F(WebCoversTest, FollowAFewRedirections) {
    const QByteArray cover = picture(qRgb(1, 2, 3));
    web.serve("/end", cover);
    web.redirect("/3", web.url("/end"));
    web.redirect("/2", web.url("/3"));
    web.redirect("/1", web.url("/2"));
    web.redirect("/0", web.url("/1"));
    start();
    play("A", "A", web.url("/1"));
    EXPECT_TRUE(coverBecomes(cover));
    play("B", "B", web.url("/0"));
    EXPECT_TRUE(music->waitUntilComplete(4s));
    EXPECT_EQ(probe->cover(), QByteArray()) << "four are too many";
}

TEST_F(WebCoversTest, ThatDoNotComeOrAreNoneLeaveTheTrackWithout) {
    web.serve("/text", "no picture");
    web.serveRaw("/gone", "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
    web.serve("/huge", picture(qRgb(1, 2, 3)) + QByteArray(21 * 1024 * 1024, 'x'));
    start();
    int number = 0;
    for (const QString& address : {web.url("/text"), web.url("/gone"), web.url("/huge"), web.url("/never"),
                                   QString("http://127.0.0.1:1/refused"), QString("https://[bad/")}) {
        const QString title = QString::number(++number);
        play(title, title, address);
        EXPECT_TRUE(music->waitUntilComplete(4s)) << address.toStdString();
        EXPECT_EQ(probe->cover(), QByteArray()) << address.toStdString();
    }
}

TEST_F(WebCoversTest, ALoadThatIsNoLongerWantedIsDropped) {
    start();
    play("A", "A", web.url("/never"));
    play("B", "B", {});
    EXPECT_TRUE(music->waitUntilComplete(1s)) << "nobody waits for it any more";
}

TEST_F(WebCoversTest, TheLargestPictureWins) {
    const QByteArray small = picture(qRgb(1, 2, 3), 20);
    const QByteArray large = picture(qRgb(1, 2, 3), 200);
    web.serve("/small", small);
    write("album/cover.png", large);
    start();
    player->signal({{"Metadata", metadata("A", "N", "A",
                                          {{"mpris:artUrl", web.url("/small")},
                                           {"xesam:url", "file://" + write("album/a.flac", "no music")}})}});
    EXPECT_TRUE(coverBecomes(large));
    EXPECT_TRUE(music->waitUntilComplete(1s));
    EXPECT_EQ(probe->cover(), large);
}

} // namespace
} // namespace tarnwick
