#include "tests/fakes/WirePlaylist.h"
#include "tests/players/MprisFixture.h"

namespace tarnwick {
namespace {

namespace terms = players::terms;

struct PlaylistsTest : MprisFixture {
    QList<WirePlaylist> lists{{QDBusObjectPath("/list/2"), "musica", ""},
                              {QDBusObjectPath("/list/1"), "Caffè \"del\" mattino", ""},
                              {QDBusObjectPath("/list/3"), "Åska", ""}};

    PlaylistsTest() {
        registerWirePlaylists();
        player = std::make_unique<FakePlayer>(bus.address(), "fake");
        player->put(playing(metadata("Uno", "A", "A"), 30));
        player->put({{"Orderings", QStringList{"Alphabetical", "UserDefined"}},
                     {"PlaylistCount", 3U},
                     {"ActivePlaylist", QVariant::fromValue(WireActive{true, lists[0]})}},
                    ".Playlists");
        player->answer("GetPlaylists", [this](const QDBusMessage& call) {
            return call.createReply(QVariant::fromValue(lists));
        });
        player->appear();
    }

    QString current() {
        const script::Value container = probe->fact(terms::Container);
        return container.is(script::Kind::Object)
                   ? container.asObject()->property(script::terms::Name).asText()
                   : QString();
    }
};

TEST_F(PlaylistsTest, ComeInThePlayersOrderAndSpelling) {
    start();
    const QStringList expected{"musica", "Caffè \"del\" mattino", "Åska"};
    EXPECT_TRUE(eventually([&] { return probe->playlists() == expected; }));
    EXPECT_EQ(player->calls("GetPlaylists").first(), "GetPlaylists 0 5000 UserDefined false");
    EXPECT_EQ(current(), "musica");
    EXPECT_TRUE(music->capabilities().hasPlaylists);

    // Players forget to say that there are new ones; whoever looks is served a little later.
    lists.append({QDBusObjectPath("/list/4"), "Nuova", ""});
    EXPECT_TRUE(eventually([&] { return probe->playlists().contains("Nuova"); }, 5s));
}

TEST_F(PlaylistsTest, AreWaitedForAndStayWhileThePlayerHangs) {
    player->put({{"PlaybackStatus", "Stopped"}});
    player->setDelay(150ms);
    start();
    EXPECT_TRUE(music->waitUntilComplete(3s));
    EXPECT_EQ(probe->playlists().size(), 3);

    player->setDelay(0ms);
    player->hang(true);
    player->signalRaw(QVariantMap{{"PlaylistCount", 4U}}, {}, "org.mpris.MediaPlayer2.Playlists");
    lists.append({QDBusObjectPath("/list/4"), "Nuova", ""});
    EXPECT_FALSE(eventually([&] { return !music->capabilities().hasPlaylists; }, 1300ms));
    probe->takeChanges();
    player->hang(false);
    EXPECT_TRUE(eventually([&] { return probe->takeChanges().testFlag(players::Change::Playlist); }, 2s));
    EXPECT_EQ(probe->playlists().size(), 4);
}

TEST_F(PlaylistsTest, OneIsStarted) {
    start();
    ASSERT_TRUE(eventually([&] { return probe->playlists().size() == 3; }));
    probe->perform(terms::Play, probe->named(terms::UserPlaylist, "ÅSKA"));
    player->put({{"ActivePlaylist", QVariant::fromValue(WireActive{true, lists[2]})}}, ".Playlists");
    player->signal({{"Metadata", metadata("Due", "B", "B")}, {"Position", qlonglong{0}}});
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_EQ(player->calls("ActivatePlaylist"), QStringList{"ActivatePlaylist /list/3"});
    EXPECT_TRUE(titleBecomes("Due"));
    EXPECT_TRUE(eventually([&] { return current() == "Åska"; })) << "though it was not signalled";
    EXPECT_TRUE(player->calls("Stop").isEmpty());
}

TEST_F(PlaylistsTest, APlayerThatPlaysOnIsStoppedFirst) {
    start();
    ASSERT_TRUE(eventually([&] { return probe->playlists().size() == 3; }));
    probe->perform(terms::Play, probe->named(terms::UserPlaylist, "Åska"));
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_EQ(player->calls("ActivatePlaylist").size(), 2) << "the program may end after a command";
    EXPECT_EQ(player->calls("Stop").size(), 1);
}

} // namespace
} // namespace tarnwick
