#include "platform/dispatch/VirtualDispatcher.h"

#include <gmock/gmock.h>

#include <string>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tarnwick::dispatch {
namespace {

TEST(VirtualDispatcher, RunsTasksInOrderOfDueTime) {
    VirtualDispatcher dispatcher;
    std::vector<std::string> seen;
    dispatcher.asyncAfter(dispatcher.mainQueue(), 200ms, [&] { seen.push_back("200 ms"); });
    dispatcher.asyncAfter(dispatcher.mainQueue(), 100ms, [&] { seen.push_back("100 ms"); });
    dispatcher.mainQueue().async([&] {
        seen.push_back("now");
        dispatcher.mainQueue().async([&] { seen.push_back("queued by a task"); });
    });
    EXPECT_TRUE(seen.empty()) << "nothing runs before the clock is asked";
    dispatcher.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre("now", "queued by a task"));
    dispatcher.advance(199ms);
    EXPECT_THAT(seen, ElementsAre("now", "queued by a task", "100 ms"));
    dispatcher.advance(1ms);
    EXPECT_EQ(seen.back(), "200 ms");
    EXPECT_EQ(dispatcher.now(), 200ms);
}

TEST(VirtualDispatcher, CancelledTaskDoesNotRun) {
    VirtualDispatcher dispatcher;
    bool ran = false;
    WorkItem item = dispatcher.asyncAfter(dispatcher.mainQueue(), 1s, [&] { ran = true; });
    dispatcher.advance(999ms);
    item.cancel();
    dispatcher.advance(1s);
    EXPECT_FALSE(ran);
}

TEST(VirtualDispatcher, TimerFiresAtOnceAndThenOnItsGrid) {
    VirtualDispatcher dispatcher;
    std::vector<Instant> ticks;
    auto timer = dispatcher.makeTimer(dispatcher.mainQueue(), 5s, [&] { ticks.push_back(dispatcher.now()); });
    dispatcher.advance(12s);
    EXPECT_THAT(ticks, ElementsAre(0s, 5s, 10s));
    timer.reset();
    dispatcher.advance(12s);
    EXPECT_EQ(ticks.size(), 3u);
}

TEST(VirtualDispatcher, TicksMissedDuringALongOneMergeIntoOne) {
    VirtualDispatcher dispatcher;
    std::vector<Instant> ticks;
    int running = 0;
    const auto timer = dispatcher.makeTimer(dispatcher.globalQueue(QualityOfService::Default), 1s, [&] {
        EXPECT_EQ(++running, 1) << "ticks of one timer never overlap";
        ticks.push_back(dispatcher.now());
        if (ticks.size() == 1)
            dispatcher.sleepFor(3500ms);
        --running;
    });
    dispatcher.advance(5s);
    EXPECT_THAT(ticks, ElementsAre(0s, 3500ms, 4s, 5s));
}

TEST(VirtualDispatcher, KnowsTheMainThreadFromTheOthers) {
    VirtualDispatcher dispatcher;
    bool inMain = false, inGlobal = true, inBlocking = true;
    dispatcher.mainQueue().async([&] {
        inMain = dispatcher.isMainThread();
        dispatcher.runAndWait(QualityOfService::UserInteractive,
                              [&] { inBlocking = dispatcher.isMainThread(); });
        EXPECT_TRUE(dispatcher.isMainThread());
    });
    dispatcher.globalQueue(QualityOfService::Background).async([&] { inGlobal = dispatcher.isMainThread(); });
    dispatcher.runUntilIdle();
    EXPECT_TRUE(inMain);
    EXPECT_FALSE(inGlobal);
    EXPECT_FALSE(inBlocking);
}

} // namespace
} // namespace tarnwick::dispatch
