#include "platform/animation/Rotation.h"

#include <gtest/gtest.h>

#include <numbers>

namespace tarnwick::animation {

using namespace std::chrono_literals;

constexpr double turn = 2 * std::numbers::pi;

TEST(Rotation, TurnsClockwiseOnceAPeriod) {
    Rotation rotation(1300ms);
    EXPECT_EQ(rotation.angle(5s), 0);
    rotation.start(5s);
    EXPECT_NEAR(rotation.angle(5s + 325ms), -turn / 4, 1e-9);
    EXPECT_NEAR(rotation.angle(5s + 1300ms), 0, 1e-9);
    EXPECT_NEAR(rotation.angle(5s + 1300ms * 1'000'000 + 325ms), -turn / 4, 1e-9);
}

TEST(Rotation, ResumesWhereItStopped) {
    Rotation rotation(1300ms);
    rotation.start(0s);
    rotation.stop(975ms);
    EXPECT_NEAR(rotation.angle(20s), -turn * 3 / 4, 1e-9);
    rotation.start(20s);
    EXPECT_NEAR(rotation.angle(20s), -turn * 3 / 4, 1e-9);
    EXPECT_NEAR(rotation.angle(20s + 650ms), -turn / 4, 1e-9);
    rotation.stop(21s);
    rotation.stop(22s);
    EXPECT_EQ(rotation.angle(21s), rotation.angle(30s));
}

TEST(Rotation, StartingAgainIsNoJump) {
    Rotation rotation(1300ms);
    rotation.start(0s);
    rotation.start(700ms);
    EXPECT_NEAR(rotation.angle(900ms), -turn * 900 / 1300, 1e-9);
}

} // namespace tarnwick::animation
