#include "platform/dispatch/VirtualDispatcher.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tarnwick::dispatch {
namespace {

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
