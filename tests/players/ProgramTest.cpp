// The program as a person runs it: its commands against the demo and against a real player.

#include "music/Scripts.h"
#include "tests/fakes/PrivateBus.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace tarnwick {
namespace {

struct Result {
    int code = -1;
    QString out;
    std::string err;

    QJsonValue json() const { return QJsonDocument::fromJson("[" + out.toUtf8() + "]").array().at(0); }
};

class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        environment = QProcessEnvironment::systemEnvironment();
        for (const char* name :
             {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "HOME"})
            environment.insert(name, home.path());
        environment.remove("DBUS_SESSION_BUS_ADDRESS");
        environment.remove("DISPLAY");
    }

    Result run(const QStringList& arguments, const QByteArray& input = {}) {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(TARNWICK_PROGRAM, arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60'000))
            process.kill();
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                process.readAllStandardError().toStdString()};
    }

    Result script(const QString& text, const QStringList& options) {
        return run(QStringList{"script", "-", "--json"} + options, text.toUtf8());
    }

    QTemporaryDir home;
    QProcessEnvironment environment;
};

TEST_F(ProgramTest, StatusOfTheDemoNamesEveryField) {
    const Result result = run({"status", "--json", "--source", "demo"});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.err, IsEmpty());
    const QJsonObject status = result.json().toObject();
    EXPECT_EQ(status.size(), 29) << "28 fields and the player";
    EXPECT_EQ(status["currentAlbumName"].toString(), "Lontano");
    EXPECT_TRUE(status["isPlaying"].toBool());
    EXPECT_EQ(status["tracksByDisc"].toArray().size(), 2);
    EXPECT_TRUE(status["previousAlbumTitle"].isNull());
    EXPECT_FALSE(status["currentAlbumArtwork"].toObject()["nocover"].toBool(true));
}

TEST_F(ProgramTest, ExitCodesMeanSomething) {
    const struct {
        QStringList arguments;
        int code;
        const char* says;
    } rows[] = {
        {{"--help"}, 0, ""},
        {{"--version"}, 0, ""},
        {{"do", "volume", "0.3", "--source", "demo"}, 0, ""},
        {{"do", "volume", "1.01", "--source", "demo"}, 2, "from 0 to 1"},
        {{"do", "volume", "loud", "--source", "demo"}, 2, "from 0 to 1"},
        {{"do", "dance", "--source", "demo"}, 2, "unknown command"},
        {{"do", "playlist", "no such list", "--source", "demo"}, 1, "no playlist is called"},
        {{"do", "title", "x", "--source", "demo"}, 1, "Errore"},
        {{"do", "next", "--source", "mpris"}, 1, "no player is running"},
        {{"script", "/nowhere/at/all", "--source", "demo"}, 1, "/nowhere/at/all"},
        {{"script", "-", "--limit", "never"}, 2, "--limit"},
        {{"status", "--source", "radio"}, 2, "--source"},
    };
    for (const auto& row : rows) {
        const Result result = run(row.arguments);
        const std::string line = row.arguments.join(' ').toStdString();
        EXPECT_EQ(result.code, row.code) << line << ": " << result.err;
        EXPECT_THAT(result.err, HasSubstr(row.says)) << line;
        EXPECT_LE(std::count(result.err.begin(), result.err.end(), '\n'), 1) << line << ": " << result.err;
        EXPECT_EQ(result.out.isEmpty(), row.code != 0 || row.arguments.front() == "do") << line;
    }
}

TEST_F(ProgramTest, EveryTextRunsOnTheDemo) {
    const QStringList demo{"--source", "demo"};
    const auto isPlaying = [&](const QString& text) {
        // Each run begins stopped, so the transport is started in the same script.
        return QStringLiteral("tell application \"Music\" to play\n") + text;
    };
    const Result facts = script(isPlaying(scripts::nowPlaying()), demo);
    EXPECT_EQ(facts.code, 0) << facts.err;
    EXPECT_EQ(facts.json().toArray().size(), 20);
    EXPECT_EQ(facts.json().toArray()[11].toString(), "playing");
    EXPECT_EQ(script(scripts::nowPlaying(), demo).json().toArray()[11].toString(), "stopped");
    EXPECT_GE(script(isPlaying(scripts::tracksByDisc()), demo).json().toArray().size(), 1);
    EXPECT_EQ(script(scripts::getVolume(), demo).json().toInt(), 60);
    EXPECT_EQ(script(scripts::setVolume(0.425) + "\n" + scripts::getVolume(), demo).json().toInt(), 42);
    EXPECT_TRUE(script(scripts::toggleShuffle(), demo).json().toBool());
    EXPECT_FALSE(script(scripts::getShuffle(), demo).json().toBool(true));
    EXPECT_TRUE(script(scripts::playlistNames(), demo).json().toArray().contains("Musica"));
    EXPECT_TRUE(script(isPlaying(scripts::discNumber()), demo).json().isDouble());
    for (const QString& text :
         {scripts::playPause(), scripts::nextTrack(), scripts::previousTrack(), scripts::currentPlaylist(),
          scripts::trackLocation(), scripts::playPlaylist("Musica"), scripts::startupPlaylist()}) {
        const Result result = script(text, demo);
        EXPECT_EQ(result.code, 0) << text.toStdString() << result.err;
    }
}

TEST_F(ProgramTest, BadScriptsEndWithOneLine) {
    const struct {
        const char* what;
        QByteArray text;
        const char* says;
    } rows[] = {
        {"syntax", "set a to 1\nset b to (2", "-:2:"},
        {"an unescaped quote", "tell application \"Music\"\n    play playlist \"a \"b\" c\"\nend tell",
         "-:2:"},
        {"parentheses", QByteArray(1'000'000, '('), "("},
        {"invalid UTF-8", "set a to \"\xff\xfe\"", "-:1:"},
        {"nested lists", QByteArray(1'000'000, '{'), "("},
        {"endless recursion", "on f(x)\n return f(x + 1)\nend f\nf(1)", "-2706"},
        {"endless loop", "repeat\nend repeat", "-1712"},
    };
    for (const auto& row : rows) {
        const Result result = run({"script", "-", "--source", "demo", "--limit", "2"}, row.text);
        EXPECT_EQ(result.code, 1) << row.what;
        EXPECT_THAT(result.err, HasSubstr(row.says)) << row.what;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << row.what << result.err;
        EXPECT_THAT(result.out.toStdString(), IsEmpty()) << row.what;
    }
}

/// mpv with two files that the test tagged, on a bus of its own.
class RealPlayerTest : public ProgramTest {
protected:
    static constexpr const char* title = R"(Say "hi" \o/ twice)";

    void SetUp() override {
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        makeTrack("01.flac", title, 1, 220);
        makeTrack("02.flac", "Seconda", 2, 330);
        makeCover();
        player.setProcessEnvironment(environment);
        player.start("mpv", {"--no-config", "--ao=null", "--no-video", "--really-quiet", "--volume=80",
                             "--script=/usr/lib/mpv-mpris/mpris.so", home.filePath("01.flac"),
                             home.filePath("02.flac")});
        ASSERT_TRUE(player.waitForStarted());
        ASSERT_TRUE(waitForTitle(title));
    }
    void TearDown() override {
        player.kill();
        player.waitForFinished();
    }

    void makeTrack(const QString& file, const QString& name, int number, int tone) {
        ffmpeg({"-f", "lavfi", "-i", QStringLiteral("sine=frequency=%1:duration=240").arg(tone), "-metadata",
                "title=" + name, "-metadata", "artist=Ada Ferri", "-metadata", "album=Prove d'autore",
                "-metadata", QStringLiteral("track=%1").arg(number), "-metadata", "date=2021",
                home.filePath(file)});
    }
    void makeCover() {
        ffmpeg({"-f", "lavfi", "-i", "color=c=teal:s=600x600", "-frames:v", "1", home.filePath("cover.png")});
    }
    static void ffmpeg(const QStringList& arguments) {
        ASSERT_EQ(QProcess::execute("ffmpeg", QStringList{"-loglevel", "error", "-y"} + arguments), 0);
    }

    QJsonObject status() { return run({"status", "--json"}).json().toObject(); }

    bool waitForStatus(const std::function<bool(const QJsonObject&)>& wanted) {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 20'000)
            if (wanted(status()))
                return true;
        return false;
    }
    bool waitForTitle(const QString& name) {
        return waitForStatus([&](const QJsonObject& now) { return now["currentTrackTitle"] == name; });
    }

    PrivateBus bus;
    QProcess player;
};

TEST_F(RealPlayerTest, IsShownAndDriven) {
    const QJsonObject first = status();
    EXPECT_EQ(first["currentArtistName"].toString(), "Ada Ferri");
    EXPECT_EQ(first["currentAlbumName"].toString(), "Prove d'autore");
    EXPECT_EQ(first["currentTrackYear"].toInt(), 2021);
    EXPECT_EQ(first["trackDuration"].toDouble(), 240);
    EXPECT_EQ(first["currentAlbumArtwork"].toObject()["width"].toInt(), 600);
    EXPECT_EQ(first["player"].toString(), "mpv");

    EXPECT_EQ(run({"do", "volume", "0.37"}).code, 0);
    EXPECT_EQ(status()["volumeLevel"].toDouble(), 0.37);
    EXPECT_EQ(run({"do", "next"}).code, 0);
    EXPECT_TRUE(waitForTitle("Seconda"));
    EXPECT_EQ(run({"do", "play-pause"}).code, 0);
    EXPECT_TRUE(waitForStatus([](const QJsonObject& now) { return now["isPaused"].toBool(); }));
    const double position = status()["elapsedTime"].toDouble();
    EXPECT_EQ(status()["elapsedTime"].toDouble(), position) << "a paused position stands still";
    EXPECT_EQ(run({"do", "previous"}).code, 0);
    EXPECT_TRUE(waitForTitle(title));
    EXPECT_EQ(run({"do", "title", "Seconda"}).code, 0) << "any title of the album that plays";
    EXPECT_TRUE(waitForTitle("Seconda"));
    EXPECT_EQ(run({"do", "title", title}).code, 0);
    EXPECT_TRUE(waitForTitle(title));

    const Result facts = run({"script", "-", "--json"}, scripts::nowPlaying().toUtf8());
    EXPECT_EQ(facts.json().toArray()[0].toString(), title);
    EXPECT_EQ(facts.json().toArray()[14].toArray().size(), 2) << "a script sees the whole album";
    EXPECT_EQ(facts.json().toArray().size(), 20);
}

TEST_F(RealPlayerTest, ThatHangsBlocksNobody) {
    ASSERT_EQ(QProcess::execute("kill", {"-STOP", QString::number(player.processId())}), 0);
    QElapsedTimer timer;
    timer.start();
    run({"status"});
    EXPECT_EQ(run({"do", "next"}).code, 1);
    EXPECT_LT(timer.elapsed(), 15'000);
    ASSERT_EQ(QProcess::execute("kill", {"-CONT", QString::number(player.processId())}), 0);
    EXPECT_TRUE(waitForTitle(title));
}

TEST_F(RealPlayerTest, ThatIsGoneIsSaidToBe) {
    player.kill();
    player.waitForFinished();
    EXPECT_TRUE(waitForStatus([](const QJsonObject& now) { return now["player"].isNull(); }));
    const Result result = run({"do", "next"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, HasSubstr("no player is running"));
}

} // namespace
} // namespace tarnwick
