#include "music/ChangePass.h"

#include <gmock/gmock.h>

#include <string>

using testing::ElementsAre;

namespace tarnwick {
namespace {

TEST(ChangePass, WatchersSeeTheWholeTaskInTheirOrder) {
    std::string title = "a", album = "A";
    std::vector<std::string> seen;
    ChangePass pass;
    pass.watch([&] { return title; },
               [&](const std::string& old, const std::string& now) {
                   seen.push_back("title " + old + " to " + now + " on " + album);
               });
    pass.watch([&] { return album; },
               [&](const std::string& old, const std::string& now) {
                   seen.push_back("album " + old + " to " + now);
               });
    album = "B";
    title = "between";
    title = "b";
    pass.deliver();
    EXPECT_THAT(seen, ElementsAre("title a to b on B", "album A to B"));
    pass.deliver();
    EXPECT_EQ(seen.size(), 2u) << "nothing changed";
    title = "x";
    title = "b";
    pass.deliver();
    EXPECT_EQ(seen.size(), 2u) << "back where it was";
}

TEST(ChangePass, WhatAHandlerChangesIsToldToo) {
    int first = 0, second = 0;
    std::vector<std::pair<int, int>> seen;
    ChangePass pass;
    pass.watch([&] { return first; }, [&](int old, int now) { seen.emplace_back(old, now); });
    pass.watch([&] { return second; },
               [&](int, int now) {
                   first = now * 10;
                   pass.deliver(); // ignored: the pass goes on by itself
                   EXPECT_TRUE(seen.empty());
               });
    second = 1;
    pass.deliver();
    EXPECT_THAT(seen, ElementsAre(std::pair(0, 10)));
}

TEST(ChangePass, HandlersThatAnswerEachOtherComeToAnEnd) {
    int value = 0;
    ChangePass pass;
    pass.watch([&] { return value; }, [&](int, int) { ++value; });
    value = 1;
    pass.deliver();
    EXPECT_LT(value, 100);
}

} // namespace
} // namespace tarnwick
