#include "platform/dispatch/SystemDispatcher.h"
#include "platform/power/DBusPowerManager.h"
#include "settings/ScreenSaverManager.h"
#include "tests/fakes/PrivateBus.h"
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
    DBusPowerManager power{dispatcher, {session.address(), system.address()}};
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

TEST_F(SleepPreventionOnARealBus, NoServiceAndNoBusMeanNoAssertionAndNoFuss) {
    DBusPowerManager nowhere(dispatcher, {"unix:path=/nonexistent", "unix:path=/nonexistent"});
    for (power::PowerManager* each :
         {static_cast<power::PowerManager*>(&power), static_cast<power::PowerManager*>(&nowhere)}) {
        std::optional<std::optional<power::PowerManager::Assertion>> answer;
        each->preventUserIdleDisplaySleep(reason, [&](auto assertion) { answer = assertion; });
        ASSERT_TRUE(waitFor([&] { return answer.has_value(); }));
        EXPECT_EQ(*answer, std::nullopt);
    }
    manager.preventSleep();
    manager.allowSleep();
}

TEST_F(SleepPreventionOnARealBus, AScreenSaverThatHangsBlocksNobodyAndHoldsNothing) {
    power::ScreenSaverService screenSaver(bus("session"), true);
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
