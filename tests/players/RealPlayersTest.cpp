// Real programs, each on a bus of its own: what they say, what the files add, and what they obey.

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/images/ImageStore.h"
#include "platform/musicapp/mpris/MprisMusic.h"
#include "tests/fakes/MusicProbe.h"
#include "tests/fakes/PrivateBus.h"
#include "tests/fakes/RealPlayer.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>
#include <gmock/gmock.h>

namespace tarnwick {
namespace {

namespace terms = musicapp::terms;
using namespace std::chrono_literals;

const QString oddTitle = QStringLiteral("Alba \"sul\" C\\arso, perché no?");

struct RealPlayersTest : testing::Test {
    PrivateBus bus;
    QTemporaryDir folder;
    RealPlayer player{bus.address()};
    dispatch::SystemDispatcher dispatcher;
    images::ImageStore images{dispatcher};
    std::unique_ptr<musicapp::MprisMusic> music;
    std::unique_ptr<MusicProbe> probe;
    QStringList files;
    QByteArray cover;

    /// An album of two discs in two folders.
    void SetUp() override {
        const auto tags = [](const QString& title, int track, int disc) {
            return Tags{{"title", title},
                        {"artist", "Nevia Corallo"},
                        {"album", "Lontano"},
                        {"track", QString::number(track)},
                        {"disc", QString::number(disc) + "/2"},
                        {"date", "2019"},
                        {"genre", "Jazz"},
                        {"comment", "Italy"},
                        {"grouping", "Notturni"}};
        };
        files = {folder.filePath("Lontano, è/CD1/01.flac"), folder.filePath("Lontano, è/CD1/02 #.flac"),
                 folder.filePath("Lontano, è/CD2/01.flac")};
        ASSERT_TRUE(makeSound(files[0], tags(oddTitle, 1, 1)));
        ASSERT_TRUE(makeSound(files[1], tags("Tre finestre", 2, 1)));
        ASSERT_TRUE(makeSound(files[2], tags("Barcola", 1, 2)));
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(qRgb(20, 120, 200));
        QBuffer buffer(&cover);
        image.save(&buffer, "PNG");
        for (const char* disc : {"CD1", "CD2"}) {
            QFile file(folder.filePath("Lontano, è/" + QString(disc) + "/cover.png"));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(cover);
        }
    }

    void follow() {
        music = std::make_unique<musicapp::MprisMusic>(musicapp::MprisMusic::Options{bus.address()},
                                                       dispatcher, images);
        probe = std::make_unique<MusicProbe>(*music);
    }

    void TearDown() override {
        probe.reset();
        music.reset();
        if (HasFailure())
            std::fprintf(stderr, "%s\n", player.output().constData());
    }

    /// The facts that every player, helped by the file, has to show.
    void expectFacts(const QString& title, int track, int disc) {
        ASSERT_TRUE(probe->eventually([&] { return probe->title() == title; }, 10s))
            << probe->title().toStdString();
        EXPECT_TRUE(music->waitUntilComplete(3s));
        EXPECT_EQ(probe->artist(), "Nevia Corallo");
        EXPECT_EQ(probe->album(), "Lontano");
        EXPECT_EQ(probe->number(terms::TrackNumber), track);
        EXPECT_EQ(probe->number(terms::DiscNumber), disc);
        EXPECT_EQ(probe->number(terms::DiscCount), 2);
        EXPECT_EQ(probe->number(terms::Year), 2019);
        EXPECT_EQ(probe->text(terms::Genre), "Jazz");
        EXPECT_EQ(probe->text(terms::Comment), "Italy");
        EXPECT_EQ(probe->text(terms::Grouping), "Notturni");
        EXPECT_EQ(probe->text(terms::TrackKind), "FLAC audio file");
        EXPECT_EQ(probe->number(terms::SampleRate), 44100);
        EXPECT_GT(probe->number(terms::BitRate), 0);
        EXPECT_GT(probe->number(terms::Size), 1000);
        EXPECT_NEAR(probe->real(terms::Duration), 20, 1);
        EXPECT_EQ(probe->cover(), cover);
        EXPECT_TRUE(probe->eventually([&] { return probe->library().size() == 3; }));
        EXPECT_EQ(probe->library(), (QStringList{oddTitle, "Tre finestre", "Barcola"}));
        EXPECT_EQ(probe->library(terms::DiscNumber), (QStringList{"1", "1", "2"}));
    }

    bool comesTo(const QString& state) {
        return probe->eventually([&] { return probe->state() == state; });
    }

    /// Tries for some seconds.
    static bool probeUntil(const std::function<bool()>& attempt) {
        const auto end = std::chrono::steady_clock::now() + 5s;
        while (!attempt()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
        }
        return true;
    }

    bool startMpv(const QStringList& more = {}) {
        const QString plugin = "/usr/lib/mpv-mpris/mpris.so";
        return player.start("mpv", QStringList{"--no-config", "--ao=null", "--no-video", "--volume=50",
                                               "--script=" + plugin, "--load-scripts=no", "--idle=yes"} +
                                       more + files);
    }
};

TEST_F(RealPlayersTest, MpvIsFollowedAndCommanded) {
    ASSERT_TRUE(startMpv());
    follow();
    expectFacts(oddTitle, 1, 1);
    EXPECT_EQ(probe->state(), "playing");
    EXPECT_EQ(music->playerName(), "mpv");

    probe->perform(terms::NextTrack);
    expectFacts("Tre finestre", 2, 1);
    const double before = probe->position();
    EXPECT_TRUE(probe->eventually([&] { return probe->position() > before + 0.2; }));

    probe->perform(terms::Pause);
    EXPECT_TRUE(comesTo("paused"));
    const double held = probe->position();
    probe->application()->setProperty(terms::SoundVolume, script::Value::integer(30));
    EXPECT_EQ(probe->volume(), 30);
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_TRUE(probe->eventually([&] { return player.run("playerctl", {"volume"}).startsWith("0.3"); }));
    EXPECT_NEAR(probe->position(), held, 0.3);
    probe->perform(terms::Play);
    EXPECT_TRUE(comesTo("playing"));

    // The title with quotes and a backslash, found by its name and opened as a file.
    const script::Filter named{.op = script::Filter::Operator::Equal,
                               .property = script::terms::Name,
                               .value = script::Value::text(oddTitle)};
    const auto tracks = probe->playlist(terms::LibraryPlaylist)
                            ->elements({.elementClass = terms::Track, .filter = &named, .from = 1, .to = 1});
    ASSERT_EQ(tracks.size(), 1U);
    probe->perform(terms::Play, script::Value::object(tracks.front()));
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    expectFacts(oddTitle, 1, 1);
}

TEST_F(RealPlayersTest, MpvThatIsStoppedShortBlocksNobody) {
    ASSERT_TRUE(startMpv());
    follow();
    ASSERT_TRUE(probe->eventually([&] { return probe->title() == oddTitle; }, 10s));
    player.suspend();
    const auto begin = std::chrono::steady_clock::now();
    probe->perform(terms::NextTrack);
    EXPECT_EQ(probe->title(), oddTitle);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 100ms);
    EXPECT_NE(music->finishCommands(2s), std::nullopt);
    player.resume();
    // The command was only delayed, so the player does it now.
    EXPECT_TRUE(probe->eventually([&] { return probe->title() == "Tre finestre"; }, 2s));
    player.kill();
    EXPECT_TRUE(probe->eventually([&] { return !probe->isRunning(); }));
}

TEST_F(RealPlayersTest, IdleMpvIsStoppedWhateverItSays) {
    files.clear();
    ASSERT_TRUE(startMpv());
    follow();
    ASSERT_TRUE(probe->eventually([&] { return probe->isRunning(); }, 10s));
    EXPECT_EQ(probe->state(), "stopped");
}

TEST_F(RealPlayersTest, AudaciousIsCompletedFromTheFiles) {
    player.setVariable("SDL_AUDIODRIVER", "dummy");
    ASSERT_TRUE(player.start("audacious", QStringList{"-H"} + files));
    follow();
    ASSERT_TRUE(probe->eventually([&] { return probe->isRunning(); }, 10s));
    // Without a sound card it may wait to be told.
    EXPECT_TRUE(probe->eventually(
        [&] {
            if (probe->state() != "playing")
                player.run("playerctl", {"play"});
            return probe->state() == "playing";
        },
        10s));
    expectFacts(oddTitle, 1, 1);
    // It takes its name on the bus before it says who it is.
    EXPECT_TRUE(probe->eventually([&] { return music->playerName() == "Audacious"; }));
    EXPECT_FALSE(music->capabilities().canShuffle);
    probe->perform(terms::NextTrack);
    expectFacts("Tre finestre", 2, 1);
    probe->perform(terms::Pause);
    EXPECT_TRUE(comesTo("paused"));
}

TEST_F(RealPlayersTest, MpdIsFollowedThroughItsBridge) {
    QTcpServer freePort;
    ASSERT_TRUE(freePort.listen(QHostAddress::LocalHost));
    const QByteArray port = QByteArray::number(freePort.serverPort());
    freePort.close();
    const QByteArray musicFolder = folder.path().toUtf8();
    const QByteArray home = player.home().toUtf8();
    player.writeFile("mpd.conf", "music_directory \"" + musicFolder + "\"\ndb_file \"" + home +
                                     "/db\"\nbind_to_address \"127.0.0.1\"\nport \"" + port +
                                     "\"\naudio_output {\ntype \"null\"\nname \"none\"\nmixer_type "
                                     "\"software\"\n}\n");
    player.writeFile("mpDris2.conf", "[Connection]\nhost = 127.0.0.1\nport = " + port +
                                         "\nmusic_dir = " + musicFolder + "\n[Bling]\nnotify = False\n");
    ASSERT_TRUE(player.start("mpd", {"--no-daemon", player.home() + "/mpd.conf"}));
    QTcpSocket wire;
    ASSERT_TRUE(probeUntil([&] {
        wire.connectToHost(QHostAddress::LocalHost, port.toUShort());
        return wire.waitForConnected(200) && wire.waitForReadyRead(1000);
    }));
    wire.write("update\nadd \"Lontano, è/CD1\"\nplay\n");
    wire.waitForBytesWritten();
    RealPlayer bridge{bus.address()};
    ASSERT_TRUE(bridge.start("mpDris2", {"--config=" + player.home() + "/mpDris2.conf"}));
    follow();
    QElapsedTimer asked;
    asked.start();
    ASSERT_TRUE(probe->eventually(
        [&] {
            // Seldom enough that what was asked for can begin.
            if (asked.hasExpired(1000) && (!probe->isRunning() || probe->state() == "stopped")) {
                asked.restart();
                wire.write("add \"Lontano, è/CD1\"\nplay\n"); // until the folder has been looked through
                wire.waitForBytesWritten(100);
            }
            return probe->title() == oddTitle;
        },
        30s));
    expectFacts(oddTitle, 1, 1);
    probe->perform(terms::NextTrack);
    expectFacts("Tre finestre", 2, 1);
    const double before = probe->position();
    EXPECT_TRUE(probe->eventually([&] { return probe->position() > before + 0.5; }));
    probe->perform(terms::Pause);
    EXPECT_TRUE(comesTo("paused"));
    probe->application()->setProperty(terms::ShuffleEnabled, script::Value::boolean(true));
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_TRUE(player.run("playerctl", {"shuffle"}).startsWith("On"));
}

} // namespace
} // namespace tarnwick
