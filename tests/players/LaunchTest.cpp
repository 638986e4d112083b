// What starts a player when none runs: its desktop file.

#include "tests/fakes/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDir>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>

#include <csignal>

using testing::HasSubstr;

namespace tarnwick {
namespace {

/// A home in which the fake player is installed, and a bus on which nobody plays yet.
class LaunchTest : public testing::Test {
protected:
    void SetUp() override {
        environment = QProcessEnvironment::systemEnvironment();
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
            environment.insert(name, home.path());
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        write("applications/org.fake.Jukebox.desktop",
              "[Desktop Action Other]\nExec=/nowhere\n[Desktop Entry]\nType=Application\nName=Juke Box\n"
              "Exec=\"" TARNWICK_FAKE_PLAYER "\" org.fake.Jukebox %U\n");
    }
    void TearDown() override {
        if (const auto pid = player().value())
            kill(static_cast<pid_t>(pid), SIGKILL);
        QDBusConnection::disconnectFromBus("launch-test");
    }

    void write(const QString& name, const QByteArray& text) const {
        const QString path = home.filePath(name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// Runs the program; its exit code and what it complained about.
    std::pair<int, std::string> run(const QStringList& arguments) const {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(TARNWICK_PROGRAM, arguments);
        if (!process.waitForFinished(30'000))
            process.kill();
        return {process.exitCode(), process.readAllStandardError().toStdString()};
    }

    QDBusReply<unsigned> player() const {
        return connection.interface()->servicePid("org.mpris.MediaPlayer2.org.fake.Jukebox");
    }

    bool becomes(const QString& status) const {
        return QTest::qWaitFor([&] {
            const QDBusInterface it("org.mpris.MediaPlayer2.org.fake.Jukebox", "/org/mpris/MediaPlayer2",
                                    "org.freedesktop.DBus.Properties", connection);
            auto call = QDBusMessage::createMethodCall(it.service(), it.path(), it.interface(), "GetAll");
            call << "org.mpris.MediaPlayer2.Player";
            const QDBusReply<QVariantMap> reply = connection.call(call);
            return reply.isValid() && reply.value()["PlaybackStatus"] == status;
        });
    }

    PrivateBus bus;
    QTemporaryDir home;
    QProcessEnvironment environment;
    QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), "launch-test");
};

TEST_F(LaunchTest, PlayStartsThePlayerThatIsNamed) {
    const auto [code, said] = run({"do", "play-pause", "--player", "jukebox"});
    EXPECT_EQ(code, 0) << said;
    ASSERT_TRUE(player().isValid());
    EXPECT_TRUE(becomes("Paused")) << "it began by itself, so the command paused it";
}

TEST_F(LaunchTest, PlayStartsThePlayerOfTheLastTime) {
    write("tarnwick/last-player", "org.fake.Jukebox");
    const auto [code, said] = run({"do", "play-pause"});
    EXPECT_EQ(code, 0) << said;
    EXPECT_TRUE(player().isValid());
}

TEST_F(LaunchTest, PlayStartsTheDesktopsOwnChoice) {
    write("mimeapps.list", "[Added Associations]\naudio/mpeg=other.desktop;\n[Default Applications]\n"
                           "audio/mpeg=gone.desktop;org.fake.Jukebox.desktop;\n");
    const auto [code, said] = run({"do", "play-pause"});
    EXPECT_EQ(code, 0) << said;
    EXPECT_TRUE(player().isValid());
    QFile last(home.filePath("tarnwick/last-player"));
    EXPECT_TRUE(last.open(QIODevice::ReadOnly) && last.readAll() == "org.fake.Jukebox");
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
        const auto [code, said] = run(QStringList{"do", "play-pause"} +
                                      (name.isEmpty() ? QStringList() : QStringList{"--player", name}));
        EXPECT_EQ(code, 1) << row.name;
        EXPECT_THAT(said, HasSubstr(row.says)) << row.name;
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
}

} // namespace
} // namespace tarnwick
