// The program as a person runs it: its commands against the demo and against a real player.

#include "music/Scripts.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/Pictures.h"
#include "tests/fakes/RealPlayer.h"
#include "tests/players/ProgramFixture.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using testing::HasSubstr;
using testing::IsEmpty;

namespace tarnwick {
namespace {

class ProgramTest : public ProgramFixture {
protected:
    static QJsonValue json(const Result& result) {
        return QJsonDocument::fromJson("[" + result.out.toUtf8() + "]").array().at(0);
    }
};

TEST_F(ProgramTest, StatusOfTheDemoNamesEveryField) {
    const Result result = run({"status", "--json", "--source", "demo"});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.err, IsEmpty());
    const QJsonObject status = json(result).toObject();
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
        {{"do", "shuffle", "--source", "demo"}, 0, ""},
        {{"do", "playlist", "musica", "--source", "demo"}, 0, ""},
        {{"do", "volume", "+0.1", "--source", "demo"}, 0, ""},
        {{"do", "volume", "-1", "--source", "demo"}, 0, ""},
        {{"do", "shuffle", "on", "--source", "demo"}, 0, ""},
        {{"do", "play", "--source", "demo"}, 0, ""},
        {{"do", "pause", "--source", "demo"}, 0, ""},
        {{"do", "stop", "--source", "demo"}, 0, ""},
        {{"-h"}, 0, ""},
        {{"-V"}, 0, ""},
        {{"do", "volume", "+2", "--source", "demo"}, 2, "a step like"},
        {{"do", "seek", "--source", "demo"}, 2, "usage: tarnwick do seek SECONDS"},
        {{"do", "seek", "soon", "--source", "demo"}, 2, "number of seconds"},
        {{"do", "seek", "5", "--source", "demo"}, 1, "(-1728)"},
        {{"do", "shuffle", "maybe", "--source", "demo"}, 2, "on or off"},
        {{"do", "playlists", "x", "--source", "demo"}, 2, "usage: tarnwick do playlists"},
        {{"do", "playlists", "--source", "mpris"}, 1, "no player is running"},
        {{"status", "--player", "mpv"}, 1, "no session bus"},
        {{"status", "--player", "mpv", "--source", "demo"}, 2, "does not go with --source demo"},
        {{"snapshot", "x.jpg"}, 2, "end in .png"},
        {{"snapshot", "x.png", "--scene", "nope"}, 2, "two-discs"},
        {{"snapshot", "x.png", "--dark"}, 2, "--dark goes with --view preferences"},
        {{"status", "--dark"}, 2, "--dark does not go with status"},
        {{"record", "x.png", "nope", "y.png"}, 2, "33Vinyl"},
        {{"do", "volume", "1.01", "--source", "demo"}, 2, "from 0 to 1"},
        {{"do", "volume", "loud", "--source", "demo"}, 2, "from 0 to 1"},
        {{"do", "dance", "--source", "demo"}, 2, "unknown command"},
        {{"do", "playlist", "no such list", "--source", "demo"}, 1, "no playlist is called"},
        {{"do", "title", "x", "--source", "demo"}, 1, "Errore"},
        {{"do", "next", "--source", "mpris"}, 1, "no player is running"},
        {{"script", "/nowhere/at/all", "--source", "demo"}, 1, "/nowhere/at/all"},
        {{"script", "-", "--limit", "never"}, 2, "--limit"},
        {{"status", "--source", "radio"}, 2, "--source is auto, mpris or demo"},
        {{"stauts"}, 2, "unknown command 'stauts'"},
        {{"--sourec", "demo"}, 2, "unknown option --sourec"},
        {{"status", "--source"}, 2, "needs a value"},
        {{"status", "--json=1"}, 2, "takes no value"},
        {{"status", "now"}, 2, "usage: tarnwick status"},
        {{"do"}, 2, "usage: tarnwick do"},
        {{"do", "title", "a", "b"}, 2, "usage: tarnwick do"},
        {{"--json"}, 2, "--json does not go with display"},
        {{"status", "--limit", "2"}, 2, "--limit does not go with status"},
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

TEST_F(ProgramTest, AScriptFromAPipeIsReadToItsEnd) {
    const QByteArray comments = QByteArray("-- comment line\n").repeated(20'000);
    const Result whole = run({"script", "-", "--source", "demo"}, comments + "return \"end\"");
    EXPECT_EQ(whole.code, 0) << whole.err;
    EXPECT_EQ(whole.out, "\"end\"\n");

    const Result tooLong = run({"script", "-", "--source", "demo"}, QByteArray(17 << 20, ' '));
    EXPECT_EQ(tooLong.code, 1);
    EXPECT_EQ(tooLong.err, "tarnwick: -: too large for a script, which has 16 MiB at most\n");
}

TEST_F(ProgramTest, WhatAScriptSaysIsOneHarmlessLine) {
    const Result result = run({"script", "-", "--source", "demo"},
                              "log \"a\" & return & \"b\\n\x1b[31mc\"\nreturn \"\x1b]0;x\x07\"");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "tarnwick: a b \\u001b[31mc\n");
    EXPECT_EQ(result.out, "\"\\u001b]0;x\\u0007\"\n");
}

TEST_F(ProgramTest, ASecondValueIsStoredToo) {
    EXPECT_EQ(run({"defaults", "randomBackgroundEnabled", "true"}).code, 0);
    EXPECT_EQ(run({"defaults", "backgroundOption"}).out, "random\n");
    EXPECT_EQ(run({"defaults", "randomBackgroundEnabled", "false"}).code, 0);
    EXPECT_EQ(run({"defaults", "backgroundOption"}).out, "random\n") << "only switching it on chooses";
}

TEST_F(ProgramTest, AStationWithoutATitleIsShown) {
    const PrivateBus bus;
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
    FakePlayer player(bus.address(), "radio");
    player.put(playing({{"mpris:trackid", "/1"},
                        {"xesam:artist", QStringList{"Radio Uno"}},
                        {"xesam:url", "https://radio.example/live"}}));
    player.appear();
    const Result result = run({"status", "--json"});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.err, IsEmpty()) << "what a healthy player lacks is no error";
    const QJsonObject status = json(result).toObject();
    EXPECT_TRUE(status["isPlaying"].toBool());
    EXPECT_EQ(status["currentTrackTitle"].toString(), "Titolo sconosciuto");
    EXPECT_EQ(status["currentArtistName"].toString(), "Radio Uno");
    EXPECT_EQ(status["currentAlbumName"].toString("?"), "");
    EXPECT_EQ(status["currentTrackGroup"].toString("?"), "");
    EXPECT_EQ(status["currentTrackComment"].toString("?"), "");
    EXPECT_TRUE(status["tracksByDisc"].toArray().isEmpty());
    EXPECT_THAT(run({"status", "--player", "mpv"}).err,
                HasSubstr("no player is called 'mpv'; there are radio"));
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
        const auto make = [this](const QString& file, const QString& name, int number) {
            return makeSound(home.filePath(file),
                             {{"title", name},
                              {"artist", "Ada Ferri"},
                              {"album", "Prove d'autore"},
                              {"track", QString::number(number)},
                              {"comment", "two\nlines \x1b[2J"},
                              {"date", "2021"}},
                             240);
        };
        ASSERT_TRUE(make("01.flac", title, 1) && make("02.flac", "Seconda", 2));
        writeFile(home.filePath("cover.png"), encoded(plainPicture(Qt::darkCyan, {600, 600})));
        ASSERT_TRUE(player.start("mpv", {"--no-config", "--ao=null", "--no-video", "--really-quiet",
                                         "--volume=80", "--script=/usr/lib/mpv-mpris/mpris.so",
                                         home.filePath("01.flac"), home.filePath("02.flac")}));
        ASSERT_TRUE(waitForTitle(title));
    }

    QJsonObject status() { return json(run({"status", "--json"})).toObject(); }

    bool waitForStatus(const std::function<bool(const QJsonObject&)>& wanted) {
        return QTest::qWaitFor([&] { return wanted(status()); }, 20'000);
    }
    bool waitForTitle(const QString& name) {
        return waitForStatus([&](const QJsonObject& now) { return now["currentTrackTitle"] == name; });
    }

    PrivateBus bus;
    RealPlayer player{bus.address()};
};

TEST_F(RealPlayerTest, IsShownAndDriven) {
    const QJsonObject first = status();
    EXPECT_EQ(first["currentArtistName"].toString(), "Ada Ferri");
    EXPECT_EQ(first["currentAlbumName"].toString(), "Prove d'autore");
    EXPECT_EQ(first["currentTrackYear"].toInt(), 2021);
    EXPECT_EQ(first["trackDuration"].toDouble(), 240);
    EXPECT_EQ(first["currentAlbumArtwork"].toObject()["width"].toInt(), 600);
    EXPECT_EQ(first["player"].toString(), "mpv");

    const QString plain = run({"status"}).out;
    EXPECT_EQ(plain.count('\n'), 29) << "a line a field, whatever a tag holds";
    EXPECT_THAT(plain.toStdString(), HasSubstr("currentTrackComment: two lines \\u001b[2J\n"));

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
    EXPECT_EQ(json(facts).toArray()[0].toString(), title);
    EXPECT_EQ(json(facts).toArray()[14].toArray().size(), 2) << "a script sees the whole album";
    EXPECT_EQ(json(facts).toArray().size(), 20);
}

TEST_F(RealPlayerTest, ThatHangsBlocksNobody) {
    player.suspend();
    QElapsedTimer timer;
    timer.start();
    run({"status"});
    EXPECT_EQ(run({"do", "next"}).code, 1);
    EXPECT_LT(timer.elapsed(), 15'000);
    player.resume();
    EXPECT_TRUE(waitForTitle(title));
}

TEST_F(RealPlayerTest, ThatIsGoneIsSaidToBe) {
    player.kill();
    EXPECT_TRUE(waitForStatus([](const QJsonObject& now) { return now["player"].isNull(); }));
    const Result result = run({"do", "next"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, HasSubstr("no player is running"));
}

} // namespace
} // namespace tarnwick
