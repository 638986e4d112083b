#include "platform/windows/Frames.h"

#include <gmock/gmock.h>

#include <limits>

namespace tarnwick::windows {
namespace {

const QRect screen(0, 0, 1920, 1080);
const QRect right(1920, 200, 1280, 1024);

TEST(Frames, OriginIsTheLowerLeftCorner) {
    const QRect rectangle(100, 200, 1200, 600);
    EXPECT_EQ(frameFromRectangle(rectangle, screen), QRectF(100, 280, 1200, 600));
    EXPECT_EQ(rectangleFromFrame(QRectF(100, 280, 1200, 600), screen), rectangle);
}

TEST(Frames, NonsenseIsNoPlaceButNoCrashEither) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QRect made = rectangleFromFrame(QRectF(1e300, nan, -5, 1e20), screen);
    EXPECT_GE(made.width(), 1);
    EXPECT_GE(made.height(), 1);
}

struct Place {
    const char* what;
    QRect stored;
    QList<QRect> screens;
    QRect expected;
};

TEST(Frames, WhatCanBeReachedIsLeftAndTheRestBroughtOntoAScreen) {
    const Place places[] = {
        {"in its place", {100, 100, 1200, 600}, {screen}, {100, 100, 1200, 600}},
        {"half outside is where the user put it", {1400, 100, 1200, 600}, {screen}, {1400, 100, 1200, 600}},
        {"its screen is gone", {2000, 300, 1200, 600}, {screen}, {720, 300, 1200, 600}},
        {"its screen is there", {2000, 300, 1200, 600}, {screen, right}, {2000, 300, 1200, 600}},
        {"a sliver is left", {1900, 100, 1200, 600}, {screen}, {720, 100, 1200, 600}},
        {"above everything", {100, -590, 1200, 600}, {screen}, {100, 0, 1200, 600}},
        {"larger than any screen", {0, 0, 3840, 1920}, {screen}, {0, 0, 1920, 960}},
        {"no screen at all", {5, 5, 10, 10}, {}, {5, 5, 10, 10}},
    };
    for (const Place& place : places)
        EXPECT_EQ(broughtOntoScreen(place.stored, place.screens), place.expected) << place.what;
}

struct Resize {
    const char* what;
    QSize now, before, expected;
};

TEST(Frames, AProportionFollowsTheSideThatTheUserMoved) {
    const Resize resizes[] = {
        {"wider", {1400, 600}, {1200, 600}, {1400, 700}},
        {"narrower", {800, 600}, {1200, 600}, {800, 400}},
        {"higher", {1200, 700}, {1200, 600}, {1400, 700}},
        {"a corner, mostly down", {1210, 800}, {1200, 600}, {1600, 800}},
        {"higher than the screen is wide", {1200, 1000}, {1200, 600}, {1920, 960}},
    };
    for (const Resize& resize : resizes)
        EXPECT_EQ(inProportion(resize.now, resize.before, QSize(2, 1), screen.size()), resize.expected)
            << resize.what;
}

TEST(Frames, FirstPlaceIsTheMiddle) {
    EXPECT_EQ(centred(QSize(1200, 600), screen), QRect(360, 240, 1200, 600));
    EXPECT_EQ(centred(QSize(1200, 600), QRect(0, 0, 800, 600)).size(), QSize(800, 400));
}

} // namespace
} // namespace tarnwick::windows
