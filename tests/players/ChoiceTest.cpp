#include "tests/players/MprisFixture.h"

namespace tarnwick {
namespace {

namespace terms = musicapp::terms;

QVariantMap paused(const QVariantMap& metadata) {
    return with(playing(metadata), {{"PlaybackStatus", "Paused"}});
}

using ChoiceTest = MprisFixture;

TEST_F(ChoiceTest, TheOneThatPlaysCountsAndStaysWhileItDoes) {
    const auto first = makePlayer("first", paused(metadata("Uno", "A", "A")));
    const auto second = makePlayer("second", playing(metadata("Due", "B", "B")));
    start();
    EXPECT_EQ(music->playerName(), "second");
    first->signal({{"PlaybackStatus", "Playing"}});
    second->signal({{"Volume", 0.9}});
    ASSERT_TRUE(eventually([&] { return probe->volume() == 90; }));
    EXPECT_EQ(music->playerName(), "second");
    second->signal({{"PlaybackStatus", "Paused"}});
    EXPECT_TRUE(titleBecomes("Uno"));
    first->signal({{"PlaybackStatus", "Paused"}});
    EXPECT_TRUE(stateBecomes("paused"));
    EXPECT_EQ(music->playerName(), "first") << "the one that played last";
}

TEST_F(ChoiceTest, WhenItVanishesTheNextIsTaken) {
    auto first = makePlayer("first", playing(metadata("Uno", "A", "A")));
    const auto second = makePlayer("second", paused(metadata("Due", "B", "B")));
    start();
    EXPECT_EQ(music->playerName(), "first");
    first.reset();
    EXPECT_TRUE(titleBecomes("Due"));
    EXPECT_EQ(probe->state(), "paused");
}

TEST_F(ChoiceTest, AnEchoOfTheSameSongIsNotFollowed) {
    const auto browser = makePlayer("browser", playing(metadata("Uno", "A", "A")));
    start();
    const auto bridge = makePlayer("bridge", playing(metadata("Uno", "A", "A")));
    browser->signal({{"PlaybackStatus", "Paused"}});
    EXPECT_TRUE(stateBecomes("paused"));
    EXPECT_EQ(music->playerName(), "browser");
}

TEST_F(ChoiceTest, OnlyTheNamedOneIsFollowed) {
    const auto loud = makePlayer("loud", playing(metadata("Uno", "A", "A")));
    start({.player = "Quiet"});
    EXPECT_FALSE(probe->isRunning());
    const auto quiet = makePlayer("quiet.instance7", paused(metadata("Due", "B", "B")));
    EXPECT_TRUE(titleBecomes("Due"));
}

TEST_F(ChoiceTest, OneThatOnlyRepeatsOthersIsNone) {
    const auto relay = makePlayer("playerctld", playing(metadata("Uno", "A", "A")));
    start();
    EXPECT_FALSE(probe->isRunning());
}

} // namespace
} // namespace tarnwick
