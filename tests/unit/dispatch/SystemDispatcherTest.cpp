#include "platform/dispatch/SystemDispatcher.h"

#include <QEventLoop>
#include <gmock/gmock.h>

#include <latch>

using namespace std::chrono_literals;

namespace tarnwick::dispatch {
namespace {

TEST(SystemDispatcher, MainQueueRunsOnTheMainThreadInOrder) {
    SystemDispatcher dispatcher;
    QEventLoop loop;
    std::vector<int> seen;
    dispatcher.globalQueue(QualityOfService::Default).async([&] {
        EXPECT_FALSE(dispatcher.isMainThread());
        for (int i = 0; i < 1000; ++i)
            dispatcher.mainQueue().async([&, i] {
                EXPECT_TRUE(dispatcher.isMainThread());
                seen.push_back(i);
            });
        dispatcher.mainQueue().async([&] { loop.quit(); });
    });
    loop.exec();
    ASSERT_EQ(seen.size(), 1000u);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

TEST(SystemDispatcher, GlobalTasksRunAtTheSameTime) {
    SystemDispatcher dispatcher;
    std::latch together(3); // opens only when all three are running
    for (int i = 0; i < 2; ++i)
        dispatcher.globalQueue(QualityOfService::Default).async([&] { together.arrive_and_wait(); });
    dispatcher.runAndWait(QualityOfService::Default, [&] { together.arrive_and_wait(); });
}

TEST(SystemDispatcher, BlockingRunWaitsForTheTask) {
    SystemDispatcher dispatcher;
    int result = 0;
    dispatcher.runAndWait(QualityOfService::UserInteractive, [&] {
        dispatcher.sleepFor(5ms);
        result = 42;
    });
    EXPECT_EQ(result, 42);
}

TEST(SystemDispatcher, TimerTicksNeverOverlap) {
    SystemDispatcher dispatcher;
    std::atomic<int> running = 0, ticks = 0;
    std::atomic<bool> overlapped = false;
    std::latch enough(5);
    auto timer = dispatcher.makeTimer(dispatcher.globalQueue(QualityOfService::Default), 1ms, [&] {
        overlapped = overlapped || ++running > 1;
        dispatcher.sleepFor(4ms);
        --running;
        if (++ticks <= 5)
            enough.count_down();
    });
    enough.wait();
    timer->cancel();
    EXPECT_FALSE(overlapped);
}

TEST(SystemDispatcher, CancelledDelayedTaskDoesNotRun) {
    SystemDispatcher dispatcher;
    std::atomic<bool> cancelledRan = false;
    std::latch laterRan(1);
    Queue& queue = dispatcher.globalQueue(QualityOfService::Default);
    WorkItem item = dispatcher.asyncAfter(queue, 10ms, [&] { cancelledRan = true; });
    dispatcher.asyncAfter(queue, 30ms, [&] { laterRan.count_down(); });
    item.cancel();
    laterRan.wait();
    EXPECT_FALSE(cancelledRan);
}

TEST(SystemDispatcher, ShutdownWakesSleepersAndDropsWhatIsQueued) {
    std::atomic<bool> slept = true, lateRan = false;
    std::latch asleep(1);
    {
        SystemDispatcher dispatcher;
        dispatcher.asyncAfter(dispatcher.mainQueue(), 1h, [&] { lateRan = true; });
        dispatcher.globalQueue(QualityOfService::Background).async([&] {
            asleep.count_down();
            slept = dispatcher.sleepFor(1h);
        });
        asleep.wait();
    }
    EXPECT_FALSE(slept);
    EXPECT_FALSE(lateRan);
}

} // namespace
} // namespace tarnwick::dispatch
