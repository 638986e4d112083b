// What becomes of the music when a title of the album is chosen.

#include "tests/fakes/RealPlayer.h"
#include "tests/players/MprisFixture.h"

#include <QUrl>

#include <future>

namespace tarnwick {
namespace {

namespace terms = players::terms;

/// An album of three files, and a player that plays the first of them.
struct TitlesTest : MprisFixture {
    const QStringList names{"Alba", "Mezzo\n#giorno", "Sera"};

    void SetUp() override {
        for (int i = 0; i < names.size(); ++i)
            ASSERT_TRUE(makeSound(path(i), {{"title", names[i]},
                                            {"artist", "Nevia"},
                                            {"album", "Lontano"},
                                            {"track", QString::number(i + 1)}}));
    }

    QString path(int index) const { return folder.filePath(QStringLiteral("#%1 è.flac").arg(index + 1)); }
    static QString address(const QString& path) {
        return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    }
    QVariantMap at(int index) const {
        return metadata(names[index], "Nevia", "Lontano", {{"xesam:url", address(path(index))}});
    }
    void TearDown() override {
        begins = {};
        MprisFixture::TearDown();
    }

    QString playlist() const { return folder.filePath("cache/album.m3u8"); }

    std::future<void> begins; ///< the player plays what it was given

    /// The player says so much of what it takes.
    void begin(const QStringList& kinds, const QStringList& schemes = {"file"}) {
        player = std::make_unique<FakePlayer>(bus.address(), "fake");
        player->put({{"Identity", "Fake"}, {"SupportedUriSchemes", schemes}, {"SupportedMimeTypes", kinds}},
                    "");
        player->put(playing(at(0)));
        player->appear();
        start({.cacheFolder = folder.filePath("cache")});
        ASSERT_TRUE(eventually([&] { return probe->library().size() == 3; }));
    }
    std::optional<QString> choose(int index) {
        player->forget();
        probe->perform(terms::Play, probe->named(terms::Track, names[index]));
        return music->finishCommands(5s);
    }
    /// The player plays what is first in a playlist that it is given.
    void takesPlaylists() {
        player->answer("OpenUri", [this](const QDBusMessage& call) {
            QFile list(QUrl(call.arguments().at(0).toString()).toLocalFile());
            const QList<QByteArray> lines =
                list.open(QIODevice::ReadOnly) ? list.readAll().split('\n') : QList<QByteArray>();
            // Said from elsewhere: nobody is answered and heard at once.
            begins = std::async(std::launch::async, [this, first = QString::fromLatin1(lines.value(1))] {
                player->signal({{"Metadata", with(at(0), {{"xesam:url", first}})}});
            });
            return call.createReply();
        });
    }
};

TEST_F(TitlesTest, APlayerThatTakesPlaylistsGetsTheAlbumFromThereOn) {
    begin({"audio/x-mpegurl"});
    takesPlaylists();
    EXPECT_EQ(choose(1), std::nullopt);
    EXPECT_EQ(player->calls("OpenUri"), QStringList{"OpenUri " + address(playlist())});
    QFile list(playlist());
    ASSERT_TRUE(list.open(QIODevice::ReadOnly));
    EXPECT_EQ(list.readAll(),
              "#EXTM3U\n" + address(path(1)).toLatin1() + "\n" + address(path(2)).toLatin1() + "\n");
    EXPECT_EQ(choose(2), std::nullopt);
    EXPECT_EQ(player->calls("OpenUri"), QStringList{"OpenUri " + address(path(2))})
        << "nothing follows the last";
}

TEST_F(TitlesTest, OneThatDoesNotPlayThePlaylistGetsTheFileAndNoPlaylistAgain) {
    begin({"audio/flac", "application/vnd.apple.mpegurl"});
    EXPECT_EQ(choose(1), std::nullopt);
    EXPECT_EQ(player->calls("OpenUri"),
              (QStringList{"OpenUri " + address(playlist()), "OpenUri " + address(path(1))}));
    EXPECT_EQ(choose(0), std::nullopt);
    EXPECT_EQ(player->calls("OpenUri"), QStringList{"OpenUri " + address(path(0))});
}

TEST_F(TitlesTest, OneThatTakesNoPlaylistGetsTheFile) {
    begin({"audio/flac"});
    EXPECT_EQ(choose(1), std::nullopt);
    EXPECT_EQ(player->calls("OpenUri"), QStringList{"OpenUri " + address(path(1))});
}

TEST_F(TitlesTest, ARefusalIsToldAndRemembered) {
    begin({"audio/flac"});
    EXPECT_TRUE(music->capabilities().canOpenTitle);
    std::mutex mutex;
    QStringList told;
    music->setRefusalHandler([&](const QString& line) {
        const std::lock_guard lock(mutex);
        told.append(line);
    });
    player->answer("OpenUri",
                   [](const QDBusMessage& call) { return call.createErrorReply("org.fake.No", "no"); });
    EXPECT_EQ(choose(1), "Fake refused OpenUri: org.fake.No");
    EXPECT_TRUE(eventually([&] { return !music->capabilities().canOpenTitle; }));
    music->setRefusalHandler({});
    EXPECT_EQ(told, QStringList{"Fake does not play that title"});
}

TEST_F(TitlesTest, MpvGoesOnAfterTheTitle) {
    RealPlayer mpv{bus.address()};
    ASSERT_TRUE(mpv.start("mpv", {"--no-config", "--ao=null", "--no-video", "--load-scripts=no",
                                  "--script=/usr/lib/mpv-mpris/mpris.so", path(0)}));
    start({.cacheFolder = folder.filePath("cache")});
    ASSERT_TRUE(eventually([&] { return probe->title() == names[0] && probe->library().size() == 3; }, 10s));
    EXPECT_TRUE(music->waitUntilComplete(3s));
    EXPECT_TRUE(music->capabilities().canOpenTitle) << "it does not say so";
    probe->perform(terms::Play, probe->named(terms::Track, names[1]));
    EXPECT_EQ(music->finishCommands(5s), std::nullopt);
    ASSERT_TRUE(eventually([&] { return probe->title() == names[1]; }, 5s));
    probe->perform(terms::NextTrack);
    EXPECT_TRUE(eventually([&] { return probe->title() == names[2]; }, 5s)) << mpv.output().toStdString();
}

} // namespace
} // namespace tarnwick
