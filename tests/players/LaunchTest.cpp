// What starts a player when none runs: its desktop file.

#include "tests/fakes/RealPlayer.h"
#include "tests/players/ProgramFixture.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QTest>

#include <csignal>

using testing::HasSubstr;

namespace tarnwick {
namespace {

/// A home in which the fake player is installed, and a bus on which nobody plays yet.
class LaunchTest : public ProgramFixture {
protected:
    void SetUp() override {
        for (const char* name : {"XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
            environment.insert(name, home.path());
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        write("applications/org.fake.Jukebox.desktop",
              "[Desktop Action Other]\nExec=/nowhere\n[Desktop Entry]\nType=Application\nName=Juke Box\n"
              "Exec=\"" TARNWICK_FAKE_PLAYER "\" org.fake.Jukebox %U\n");
    }
    void TearDown() override {
        if (const auto pid = player().value())
            kill(static_cast<pid_t>(pid), SIGKILL);
        QDBusConnection::disconnectFromBus("launch-test");
    }

    void write(const QString& name, const QByteArray& text) const { writeFile(home.filePath(name), text); }

    /// "Play" starts the player.
    void expectStart(const QStringList& options = {}) const {
        const Result result = run(QStringList{"do", "play-pause"} + options);
        EXPECT_EQ(result.code, 0) << result.err;
        ASSERT_TRUE(player().isValid());
    }

    QDBusReply<unsigned> player() const {
        return connection.interface()->servicePid("org.mpris.MediaPlayer2.org.fake.Jukebox");
    }

    bool becomes(const QString& status) const {
        return QTest::qWaitFor([&] {
            auto call = QDBusMessage::createMethodCall("org.mpris.MediaPlayer2.org.fake.Jukebox",
                                                       "/org/mpris/MediaPlayer2",
                                                       "org.freedesktop.DBus.Properties", "GetAll");
            call << "org.mpris.MediaPlayer2.Player";
            const QDBusReply<QVariantMap> reply = connection.call(call);
            return reply.isValid() && reply.value()["PlaybackStatus"] == status;
        });
    }

    PrivateBus bus;
    QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), "launch-test");
};

TEST_F(LaunchTest, PlayStartsThePlayerThatIsNamed) {
    expectStart({"--player", "jukebox"});
    EXPECT_TRUE(becomes("Paused")) << "it began by itself, so the command paused it";
}

TEST_F(LaunchTest, PlayStartsThePlayerOfTheLastTime) {
    write("tarnwick/last-player", "org.fake.Jukebox");
    expectStart();
}

TEST_F(LaunchTest, PlayStartsTheDesktopsOwnChoice) {
    write("mimeapps.list", "[Added Associations]\naudio/mpeg=other.desktop;\n[Default Applications]\n"
                           "audio/mpeg=gone.desktop;org.fake.Jukebox.desktop;\n");
    expectStart();
    EXPECT_EQ(readFile(home.filePath("tarnwick/last-player")), "org.fake.Jukebox");
}

TEST_F(LaunchTest, APlaylistIsALineWhateverItIsCalled) {
    RealPlayer other(bus.address());
    ASSERT_TRUE(other.start(TARNWICK_FAKE_PLAYER, {"org.fake.Other", "two\nlines \x1b[2J", "plain"}));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return run({"do", "playlists"}).out == "two lines \\u001b[2J\nplain\n";
        },
        20'000));
    EXPECT_EQ(run({"do", "playlists", "--json"}).out, "[\"two\\nlines \\u001b[2J\",\"plain\"]\n");
}

TEST_F(LaunchTest, WhatCannotBeStartedIsSaid) {
    const struct {
        const char* name;
        const char* says;
    } rows[] = {{"Nonesuch", "no player called Nonesuch is installed"},
                {"Broken", "Broken One cannot be started"},
                {"", "no music player is installed"}};
    write("applications/Broken.desktop", "[Desktop Entry]\nName=Broken One\nExec=/nowhere/player\n");
    for (const auto& row : rows) {
        const QString name = row.name;
        const Result result = run(QStringList{"do", "play-pause"} +
                                  (name.isEmpty() ? QStringList() : QStringList{"--player", name}));
        EXPECT_EQ(result.code, 1) << row.name;
        EXPECT_THAT(result.err, HasSubstr(row.says)) << row.name;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
}

} // namespace
} // namespace tarnwick
