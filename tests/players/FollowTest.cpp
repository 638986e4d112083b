// `status --follow`: a line at each change, and none in between.

#include "tests/fakes/FakePlayer.h"
#include "tests/players/ProgramFixture.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <csignal>

namespace tarnwick {
namespace {

class FollowTest : public ProgramFixture {
protected:
    void SetUp() override {
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        player.put(playing(metadata("Uno", "Nevia", "Lontano"), 42));
        player.appear();
        process.setProcessEnvironment(environment);
        process.start(TARNWICK_PROGRAM, {"status", "--follow", "--json"});
        ASSERT_TRUE(process.waitForStarted());
    }
    void TearDown() override {
        process.kill();
        process.waitForFinished();
    }

    /// The next object; empty when none comes in time.
    QJsonObject next(int milliseconds = 8000) {
        const bool came = QTest::qWaitFor([&] { return process.canReadLine(); }, milliseconds);
        return came ? QJsonDocument::fromJson(process.readLine()).object() : QJsonObject();
    }
    bool ends() { return process.waitForFinished(5000); }

    PrivateBus bus;
    FakePlayer player{bus.address(), "fake"};
    QProcess process;
};

TEST_F(FollowTest, EachChangeIsOneLineAndTheAdvanceIsNone) {
    EXPECT_EQ(next()["currentTrackTitle"], "Uno");
    EXPECT_TRUE(next(700).isEmpty()) << "nothing has happened";
    player.signal({{"Volume", 0.25}});
    EXPECT_EQ(next()["volumeLevel"], 0.25);
    player.signal({{"Metadata", metadata("Due", "Nevia", "Altrove")}, {"Position", 0LL}});
    const QJsonObject changed = next();
    EXPECT_EQ(changed["currentTrackTitle"], "Due");
    EXPECT_EQ(changed["currentAlbumName"], "Altrove") << "a track is told whole";
    EXPECT_TRUE(next(700).isEmpty());
    player.disappear();
    EXPECT_TRUE(next()["player"].isNull());
}

TEST_F(FollowTest, APlayerThatSaysNothingIsLookedAt) {
    EXPECT_EQ(next()["volumeLevel"], 0.5);
    player.put({{"Volume", 0.75}});
    EXPECT_EQ(next()["volumeLevel"], 0.75) << "after five seconds at the latest";
}

TEST_F(FollowTest, EndsInPeace) {
    EXPECT_EQ(next()["currentTrackTitle"], "Uno");
    kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(ends());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
}

TEST_F(FollowTest, EndsWhenNobodyReadsAnyMore) {
    QProcess shell;
    shell.setProcessEnvironment(environment);
    QElapsedTimer timer;
    timer.start();
    shell.start("bash", {"-c", TARNWICK_PROGRAM " status --follow | head -n 1; exit ${PIPESTATUS[0]}"});
    ASSERT_TRUE(shell.waitForFinished(10'000)) << "although nothing happens at the player";
    EXPECT_LT(timer.elapsed(), 4'500) << "not only at the next look";
    EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().toStdString();
}

} // namespace
} // namespace tarnwick
