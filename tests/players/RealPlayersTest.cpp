// Real programs, each on a bus of its own: what they say, what the files add, and what they obey.

#include "tests/fakes/RealPlayer.h"
#include "tests/players/MprisFixture.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>

namespace tarnwick {
namespace {

namespace terms = players::terms;

const QString oddTitle = QStringLiteral("Alba \"sul\" C\\arso, perché no?");

struct RealPlayersTest : MprisFixture {
    RealPlayer real{bus.address()};
    QStringList files;
    const QByteArray cover = picture(qRgb(20, 120, 200), 64);

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
        for (const char* disc : {"CD1", "CD2"})
            write("Lontano, è/" + QString(disc) + "/cover.png", cover);
    }

    void TearDown() override {
        MprisFixture::TearDown();
        if (HasFailure())
            std::fprintf(stderr, "%s\n", real.output().constData());
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
        EXPECT_EQ(probe->real(terms::SampleRate), 44.1);
        EXPECT_GT(probe->number(terms::BitRate), 0);
        EXPECT_GT(probe->number(terms::Size), 1000);
        EXPECT_NEAR(probe->real(terms::Duration), 20, 1);
        EXPECT_EQ(probe->cover(), cover);
        EXPECT_TRUE(probe->eventually([&] { return probe->library().size() == 3; }));
        EXPECT_EQ(probe->library(), (QStringList{oddTitle, "Tre finestre", "Barcola"}));
        EXPECT_EQ(probe->library(terms::DiscNumber), (QStringList{"1", "1", "2"}));
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

    bool startMpv() {
        const QString plugin = "/usr/lib/mpv-mpris/mpris.so";
        return real.start("mpv", QStringList{"--no-config", "--ao=null", "--no-video", "--volume=50",
                                             "--script=" + plugin, "--load-scripts=no", "--idle=yes"} +
                                     files);
    }
};

TEST_F(RealPlayersTest, MpvIsFollowedAndCommanded) {
    ASSERT_TRUE(startMpv());
    start();
    expectFacts(oddTitle, 1, 1);
    EXPECT_EQ(probe->state(), "playing");
    EXPECT_EQ(music->playerName(), "mpv");

    probe->perform(terms::NextTrack);
    expectFacts("Tre finestre", 2, 1);
    const double before = probe->position();
    EXPECT_TRUE(probe->eventually([&] { return probe->position() > before + 0.2; }));

    probe->perform(terms::Pause);
    EXPECT_TRUE(stateBecomes("paused", 5s));
    const double held = probe->position();
    probe->application()->setProperty(terms::SoundVolume, script::Value::integer(30));
    EXPECT_EQ(probe->volume(), 30);
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_TRUE(probe->eventually([&] { return real.run("playerctl", {"volume"}).startsWith("0.3"); }));
    EXPECT_NEAR(probe->position(), held, 0.3);
    probe->perform(terms::Play);
    EXPECT_TRUE(stateBecomes("playing", 5s));

    // The title with quotes and a backslash, found by its name and opened as a file.
    probe->perform(terms::Play, probe->named(terms::Track, oddTitle));
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    expectFacts(oddTitle, 1, 1);
}

TEST_F(RealPlayersTest, MpvThatIsStoppedShortBlocksNobody) {
    ASSERT_TRUE(startMpv());
    start();
    ASSERT_TRUE(probe->eventually([&] { return probe->title() == oddTitle; }, 10s));
    real.suspend();
    const auto begin = std::chrono::steady_clock::now();
    probe->perform(terms::NextTrack);
    EXPECT_EQ(probe->title(), oddTitle);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 100ms);
    EXPECT_NE(music->finishCommands(2s), std::nullopt);
    real.resume();
    // The command was only delayed, so the player does it now.
    EXPECT_TRUE(probe->eventually([&] { return probe->title() == "Tre finestre"; }, 2s));
    real.kill();
    EXPECT_TRUE(probe->eventually([&] { return !probe->isRunning(); }));
}

TEST_F(RealPlayersTest, IdleMpvIsStoppedWhateverItSays) {
    files.clear();
    ASSERT_TRUE(startMpv());
    start();
    ASSERT_TRUE(probe->eventually([&] { return probe->isRunning(); }, 10s));
    EXPECT_EQ(probe->state(), "stopped");
}

TEST_F(RealPlayersTest, AudaciousIsCompletedFromTheFiles) {
    real.setVariable("SDL_AUDIODRIVER", "dummy");
    ASSERT_TRUE(real.start("audacious", QStringList{"-H"} + files));
    start();
    ASSERT_TRUE(probe->eventually([&] { return probe->isRunning(); }, 10s));
    // Without a sound card it may wait to be told.
    EXPECT_TRUE(probe->eventually(
        [&] {
            if (probe->state() != "playing")
                real.run("playerctl", {"play"});
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
    EXPECT_TRUE(stateBecomes("paused", 5s));
}

TEST_F(RealPlayersTest, MpdIsFollowedThroughItsBridge) {
    QTcpServer freePort;
    ASSERT_TRUE(freePort.listen(QHostAddress::LocalHost));
    const QByteArray port = QByteArray::number(freePort.serverPort());
    freePort.close();
    const QByteArray musicFolder = folder.path().toUtf8();
    const QByteArray home = real.home().toUtf8();
    real.writeFile("mpd.conf", "music_directory \"" + musicFolder + "\"\ndb_file \"" + home +
                                   "/db\"\nbind_to_address \"127.0.0.1\"\nport \"" + port +
                                   "\"\naudio_output {\ntype \"null\"\nname \"none\"\nmixer_type "
                                   "\"software\"\n}\n");
    real.writeFile("mpDris2.conf", "[Connection]\nhost = 127.0.0.1\nport = " + port +
                                       "\nmusic_dir = " + musicFolder + "\n[Bling]\nnotify = False\n");
    ASSERT_TRUE(real.start("mpd", {"--no-daemon", real.home() + "/mpd.conf"}));
    QTcpSocket wire;
    ASSERT_TRUE(probeUntil([&] {
        wire.connectToHost(QHostAddress::LocalHost, port.toUShort());
        return wire.waitForConnected(200) && wire.waitForReadyRead(1000);
    }));
    wire.write("update\nadd \"Lontano, è/CD1\"\nplay\n");
    wire.waitForBytesWritten();
    RealPlayer bridge{bus.address()};
    ASSERT_TRUE(bridge.start("mpDris2", {"--config=" + real.home() + "/mpDris2.conf"}));
    start();
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
    EXPECT_TRUE(stateBecomes("paused", 5s));
    probe->application()->setProperty(terms::ShuffleEnabled, script::Value::boolean(true));
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_TRUE(real.run("playerctl", {"shuffle"}).startsWith("On"));
}

} // namespace
} // namespace tarnwick
