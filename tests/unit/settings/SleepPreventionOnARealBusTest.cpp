#include "platform/dispatch/SystemDispatcher.h"
#include "platform/power/DBusPowerManager.h"
#include "settings/ScreenSaverManager.h"
#include "tests/fakes/PrivateBus.h"
#include "tests/unit/settings/BlankingXServer.h"
#include "tests/unit/settings/PowerServices.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

namespace tarnwick {
namespace {

using power::DBusPowerManager;

const auto reason = "TarnwickView preventing screen sleep";

class SleepPreventionOnARealBus : public testing::Test {
protected:
    SleepPreventionOnARealBus() {
        for (const auto& [name, address] :
             {std::pair("session", session.address()), std::pair("system", system.address())})
            QDBusConnection::connectToBus(address, name);
    }
    ~SleepPreventionOnARealBus() override {
        QDBusConnection::disconnectFromBus("session");
        QDBusConnection::disconnectFromBus("system");
    }

    static QDBusConnection bus(const char* name) { return QDBusConnection(QLatin1String(name)); }

    void preventSleep() {
        manager.preventSleep();
        ASSERT_TRUE(waitFor([&] { return manager.activity().has_value(); }));
    }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

    PrivateBus session;
    PrivateBus system;
    dispatch::SystemDispatcher dispatcher;
    DBusPowerManager power{dispatcher, {session.address(), system.address(), {}}};
    ScreenSaverManager manager{&power};
};

TEST_F(SleepPreventionOnARealBus, AsksTheScreenSaverFirst) {
    power::ScreenSaverService screenSaver(bus("session"));
    power::PortalService portal(bus("session"));
    power::LogindService logind(bus("system"));
    preventSleep();
    EXPECT_EQ(screenSaver.inhibitions.firstReason(), reason);
    manager.preventSleep();
    manager.allowSleep();
    EXPECT_EQ(manager.activity(), std::nullopt);
    EXPECT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 0; }));
    EXPECT_EQ(portal.inhibitions.count() + logind.count, 0);
}

TEST_F(SleepPreventionOnARealBus, AsksThePortalNextAndLogindLast) {
    {
        power::PortalService portal(bus("session"));
        preventSleep();
        EXPECT_EQ(portal.inhibitions.firstReason(), reason);
        manager.allowSleep();
        EXPECT_TRUE(waitFor([&] { return portal.inhibitions.count() == 0; }));
    }
    power::LogindService logind(bus("system"));
    preventSleep();
    EXPECT_EQ(logind.reason, reason);
    EXPECT_EQ(logind.count, 1);
    manager.allowSleep();
    EXPECT_TRUE(waitFor([&] { return logind.count == 0; }));
}

TEST_F(SleepPreventionOnARealBus, WhereNobodyCouldEverGrantItThereIsNoAssertionAndNoFuss) {
    DBusPowerManager nowhere(dispatcher, {"unix:path=/nonexistent", "unix:path=/nonexistent", {}});
    ScreenSaverManager alone(&nowhere);
    alone.preventSleep();
    std::optional<std::optional<power::PowerManager::Assertion>> answer;
    nowhere.preventUserIdleDisplaySleep(reason, [&](auto assertion) { answer = assertion; });
    ASSERT_TRUE(waitFor([&] { return answer.has_value(); }));
    EXPECT_EQ(*answer, std::nullopt);
    EXPECT_EQ(alone.activity(), std::nullopt);
    alone.allowSleep();
}

TEST_F(SleepPreventionOnARealBus, AServiceThatComesBackIsAskedAgainAndTheOldCookieIsNotItsOwn) {
    for (int way = 0; way < 3; ++way) {
        std::optional<power::ScreenSaverService> screenSaver;
        std::optional<power::PortalService> portal;
        std::optional<power::LogindService> logind;
        const std::pair<std::function<void(const QDBusConnection&)>, std::function<qsizetype()>> services[] =
            {{[&](const auto& bus) { screenSaver.emplace(bus); },
              [&] { return screenSaver->inhibitions.count(); }},
             {[&](const auto& bus) { portal.emplace(bus); }, [&] { return portal->inhibitions.count(); }},
             {[&](const auto& bus) { logind.emplace(bus); }, [&] { return qsizetype(logind->count); }}};
        const auto& [start, count] = services[way];
        const QString address = way == 2 ? system.address() : session.address();
        start(QDBusConnection::connectToBus(address, "old"));
        preventSleep();
        EXPECT_EQ(count(), 1);
        screenSaver.reset(), portal.reset(), logind.reset();
        QDBusConnection::disconnectFromBus("old");

        start(QDBusConnection::connectToBus(address, "new"));
        ASSERT_TRUE(waitFor([&] { return count() == 1; })) << way;
        manager.allowSleep();
        EXPECT_TRUE(waitFor([&] { return count() == 0; })) << way;
        screenSaver.reset(), portal.reset(), logind.reset();
        QDBusConnection::disconnectFromBus("new");
    }
}

TEST_F(SleepPreventionOnARealBus, WhatTheSuccessorGrantedToOthersIsNotTaken) {
    std::optional<power::ScreenSaverService> screenSaver(
        std::in_place, QDBusConnection::connectToBus(session.address(), "old"));
    preventSleep();
    screenSaver.reset();
    QDBusConnection::disconnectFromBus("old");
    // Everybody counts from the same number; here somebody else has ours.
    screenSaver.emplace(bus("session"), power::ScreenSaverService::Manner::Refuses);
    screenSaver->inhibitions.add(bus("session").baseService(), "theirs");
    manager.allowSleep();
    power.preventUserIdleDisplaySleep(reason, [](auto) {});
    QTest::qWait(300);
    EXPECT_EQ(screenSaver->inhibitions.firstReason(), "theirs");
}

TEST_F(SleepPreventionOnARealBus, AServiceThatAppearsLaterIsAskedAndABetterOneTakesOver) {
    preventSleep(); // nobody is there
    power::LogindService logind(bus("system"));
    EXPECT_TRUE(waitFor([&] { return logind.count == 1; }));
    power::PortalService portal(bus("session"));
    EXPECT_TRUE(waitFor([&] { return portal.inhibitions.count() == 1 && logind.count == 0; }));
    {
        power::ScreenSaverService screenSaver(bus("session"));
        EXPECT_TRUE(
            waitFor([&] { return screenSaver.inhibitions.count() == 1 && portal.inhibitions.count() == 0; }));
        EXPECT_EQ(screenSaver.inhibitions.firstReason(), reason);
    }
    EXPECT_TRUE(waitFor([&] { return portal.inhibitions.count() == 1; })) << "and the next best when it goes";
    EXPECT_EQ(logind.count, 0);
    manager.allowSleep();
    EXPECT_TRUE(waitFor([&] { return portal.inhibitions.count() == 0; }));
    power::ScreenSaverService late(bus("session"));
    QTest::qWait(300);
    EXPECT_EQ(late.inhibitions.count(), 0) << "what was released does not come back";
}

TEST_F(SleepPreventionOnARealBus, AServiceThatHasItsNameBeforeItCanAnswerIsAskedOnceMore) {
    preventSleep();
    power::ScreenSaverService screenSaver(bus("session"), power::ScreenSaverService::Manner::Refuses);
    QTest::qWait(300);
    screenSaver.setManner(power::ScreenSaverService::Manner::Grants);
    EXPECT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 1; }));
}

TEST_F(SleepPreventionOnARealBus, WhereNoScreenSaverDoesItTheXServersOwnIsSuspended) {
    const BlankingXServer server; // which blanks after a second
    ASSERT_FALSE(server.display().isEmpty());
    power::LogindService logind(bus("system"));
    const auto staysAwake = [&] {
        server.wake();
        return !QTest::qWaitFor([&] { return server.isBlank(); }, 1300);
    };
    {
        QProcess holder;
        holder.setProcessChannelMode(QProcess::ForwardedChannels);
        holder.start(QStringLiteral(POWER_HOLDER), {session.address(), system.address(), server.display()});
        ASSERT_TRUE(waitFor([&] { return logind.count == 1; }));
        EXPECT_TRUE(staysAwake()) << "whatever logind does";
        {
            power::ScreenSaverService screenSaver(bus("session"));
            ASSERT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 1; }));
            EXPECT_TRUE(waitFor([&] { return server.isBlank(); })) << "left to the desktop";
        }
        server.wake();
        EXPECT_TRUE(waitFor([&] { return logind.count == 1; }));
        holder.kill();
        holder.waitForFinished();
    }
    EXPECT_TRUE(waitFor([&] { return server.isBlank(); })) << "it does not outlive the process";
    // With no bus at all it is reason enough for an assertion.
    DBusPowerManager alone(dispatcher,
                           {"unix:path=/nonexistent", "unix:path=/nonexistent", server.display()});
    ScreenSaverManager holder(&alone);
    holder.preventSleep();
    ASSERT_TRUE(waitFor([&] { return holder.activity().has_value(); }));
    EXPECT_TRUE(staysAwake());
    holder.allowSleep();
    EXPECT_TRUE(waitFor([&] { return server.isBlank(); }));
}

TEST_F(SleepPreventionOnARealBus, AScreenSaverThatHangsBlocksNobodyAndHoldsNothing) {
    power::ScreenSaverService screenSaver(bus("session"), power::ScreenSaverService::Manner::Hangs);
    power::PortalService portal(bus("session"));
    std::chrono::nanoseconds longest{0};
    QElapsedTimer sinceTick;
    sinceTick.start();
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, [&] {
        longest = std::max(longest, std::chrono::nanoseconds(sinceTick.nsecsElapsed()));
        sinceTick.restart();
    });
    ticks.start(5);
    preventSleep();
    EXPECT_LT(longest, std::chrono::milliseconds(500)) << "the main loop went on";
    EXPECT_EQ(portal.inhibitions.count(), 1);
    EXPECT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 0; }))
        << "the request that was given up is withdrawn";
}

TEST_F(SleepPreventionOnARealBus, TwoHoldersAreIndependent) {
    power::ScreenSaverService screenSaver(bus("session"));
    ScreenSaverManager other(&power);
    manager.preventSleep();
    other.preventSleep();
    ASSERT_TRUE(waitFor([&] { return manager.activity() && other.activity(); }));
    EXPECT_EQ(screenSaver.inhibitions.count(), 2);
    manager.allowSleep();
    ASSERT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 1; }));
    EXPECT_TRUE(other.activity());
}

TEST_F(SleepPreventionOnARealBus, WhatIsAllowedBeforeTheAnswerCameIsReleased) {
    power::ScreenSaverService screenSaver(bus("session"));
    bool answered = false;
    manager.preventSleep();
    manager.allowSleep();
    power.preventUserIdleDisplaySleep(reason, [&](auto assertion) {
        power.release(*assertion);
        answered = true;
    });
    ASSERT_TRUE(waitFor([&] { return answered && screenSaver.inhibitions.count() == 0; }));
    EXPECT_EQ(manager.activity(), std::nullopt);
}

TEST_F(SleepPreventionOnARealBus, TheAssertionIsGoneWhenTheProcessIsKilled) {
    power::ScreenSaverService screenSaver(bus("session"));
    QProcess holder;
    holder.setProcessChannelMode(QProcess::ForwardedChannels);
    holder.start(QStringLiteral(POWER_HOLDER), {session.address(), system.address()});
    ASSERT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 1; }));
    holder.kill();
    EXPECT_TRUE(waitFor([&] { return screenSaver.inhibitions.count() == 0; }));
    holder.waitForFinished();
}

} // namespace
} // namespace tarnwick
