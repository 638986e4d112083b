#include "players/mpris/PlayerModel.h"

#include <gmock/gmock.h>

namespace tarnwick::players {
namespace {

using namespace std::chrono_literals;

QVariantMap metadata(const QString& title, int seconds = 180) {
    return {
        {"xesam:title", title}, {"xesam:artist", "Nevia"}, {"mpris:length", qlonglong{seconds} * 1000000}};
}

QVariantMap properties(const QString& status, const QString& title, double position) {
    return {{"PlaybackStatus", status},
            {"Metadata", metadata(title)},
            {"Position", static_cast<qlonglong>(position * 1e6)},
            {"Volume", 0.5},
            {"Shuffle", false}};
}

TEST(PlayerFacts, APictureIsSoughtWhereItIsNow) {
    EXPECT_EQ(normaliseMetadata({{"mpris:artUrl", "https://open.spotify.com/image/ab12"}}).artUrl,
              "https://i.scdn.co/image/ab12");
}

TEST(PlayerFacts, AnAlbumWithoutANameIsThatOfItsFolderOrArtist) {
    const auto at = [](const char* url, const char* artist) {
        return normaliseMetadata({{"xesam:url", url}, {"xesam:title", "Traccia"}, {"xesam:artist", artist}});
    };
    const Metadata file = at("file:///music/one/01.wav", "");
    EXPECT_TRUE(isSameAlbum(file, at("file:///music/one/02.wav", "")));
    EXPECT_FALSE(isSameAlbum(file, at("file:///music/two/01.wav", "")));
    EXPECT_FALSE(isSameAlbum(file, at("https://radio.example/live", "")));
    const Metadata stream = at("https://radio.example/live", "Radio Uno");
    EXPECT_TRUE(isSameAlbum(stream, at("https://radio.example/live", "Radio Uno")));
    EXPECT_FALSE(isSameAlbum(stream, at("https://radio.example/live", "Radio Due")));
}

/// A model whose wishes are granted by a player that is a function of the time.
struct PlayerModelTest : testing::Test {
    PlayerModel model;
    dispatch::Instant now{1h};
    std::function<QVariantMap()> player = [] { return properties("Playing", "Alba", 0); };
    int readings = 0;

    void pass(dispatch::Duration time) {
        for (const auto end = now + time; now < end; now += 10ms) {
            model.advance(now);
            if (model.wantsReading(now)) {
                ++readings;
                model.readWasSent(now);
                model.readAll(player(), now);
            }
        }
    }
    void start() {
        model.readWasSent(now);
        model.readAll(player(), now);
        pass(1s);
    }
    double position() { return model.belief().position.valueAt(now); }
};

TEST_F(PlayerModelTest, ABurstEndsAfterAHundredQuietMillisecondsButLastsNoLongerThanFourHundred) {
    start();
    for (int i = 1; i <= 60; ++i) {
        const QString title = QString::number(i);
        player = [title] { return properties("Playing", title, 0); };
        model.change({{"Metadata", metadata(title)}}, {}, now);
        pass(10ms);
        if (i == 39) {
            EXPECT_EQ(model.belief().metadata.track.name, "Alba");
        }
    }
    EXPECT_NE(model.belief().metadata.track.name, "Alba");
    pass(120ms);
    EXPECT_EQ(model.belief().metadata.track.name, "60");
}

TEST_F(PlayerModelTest, AnIdlePlayerIsLeftAlone) {
    start();
    pass(2s);
    readings = 0;
    pass(1min);
    EXPECT_EQ(readings, 0);
    EXPECT_NEAR(position(), 63, 0.1);
}

TEST_F(PlayerModelTest, APauseBelievedLateStandsWhereItBegan) {
    start();
    const double before = position();
    player = [&] { return properties("Paused", "Alba", before); };
    model.change({{"PlaybackStatus", "Paused"}}, {}, now);
    pass(450ms);
    EXPECT_EQ(model.belief().state, PlayerState::Playing);
    pass(150ms);
    EXPECT_EQ(model.belief().state, PlayerState::Paused);
    EXPECT_NEAR(position(), before, 0.02);
}

TEST_F(PlayerModelTest, TheRateCounts) {
    player = [] {
        auto said = properties("Playing", "Alba", 0);
        said.insert("Rate", 2.0);
        return said;
    };
    model.readWasSent(now);
    model.readAll(player(), now);
    const double before = position();
    now += 10s;
    EXPECT_NEAR(position() - before, 20, 0.01);
    now += 1h;
    EXPECT_EQ(position(), 180) << "not beyond the end";
}

TEST_F(PlayerModelTest, ASilentPlayerIsAskedAgainButNotBesieged) {
    start();
    for (int second = 0; second < 10; ++second) {
        model.seeked(now);
        model.advance(now);
        ASSERT_TRUE(model.wantsReading(now));
        model.readWasSent(now);
        EXPECT_FALSE(model.wantsReading(now)) << "one question at a time";
        now += 1s;
        model.readFailed(true, now);
    }
    EXPECT_TRUE(model.isSilent());
    now += 50ms;
    EXPECT_TRUE(model.wantsReading(now));
}

TEST_F(PlayerModelTest, TheFirstStateOfAPlayerThatIsNeverQuietArrives) {
    // Every answer comes 150 ms late and in the middle of signals.
    const auto begin = now;
    std::optional<dispatch::Instant> asked;
    for (int signal = 0; signal < 20 && !model.isReady(); ++signal, now += 50ms) {
        model.change({{"Volume", 0.5}}, {}, now);
        model.advance(now);
        if (asked && now >= *asked + 150ms) {
            model.readAll(properties("Playing", "Alba", 100), now);
            asked.reset();
        } else if (!asked && (signal == 0 || model.wantsReading(now))) {
            model.readWasSent(now);
            asked = now;
        }
    }
    ASSERT_TRUE(model.isReady());
    EXPECT_LE(now - begin, 700ms);
    EXPECT_EQ(model.belief().state, PlayerState::Playing);
    EXPECT_EQ(model.belief().metadata.track.name, "Alba");
    EXPECT_NEAR(position(), 100.3, 0.2);
}

TEST_F(PlayerModelTest, AFirstStateReadInTheMiddleOfAChangeIsNoMixtureOfTwoTracks) {
    model.readWasSent(now);
    model.change({{"Metadata", metadata("Notte")}}, {}, now);
    model.readAll(properties("Playing", "Alba", 100), now);
    EXPECT_FALSE(model.isReady());
    player = [] { return properties("Playing", "Notte", 1); };
    for (int signal = 0; signal < 10 && !model.isReady(); ++signal, now += 50ms) {
        model.change({{"Metadata", metadata("Notte", 240)}}, {}, now);
        model.advance(now);
    }
    ASSERT_TRUE(model.isReady());
    EXPECT_EQ(model.belief().metadata.track.name, "Notte");
    EXPECT_EQ(model.belief().metadata.track.duration, 240);
    EXPECT_LT(position(), 1);
}

TEST_F(PlayerModelTest, APlayerThatHangsStandsStillUntilItAnswers) {
    start();
    model.seeked(now);
    const auto leaveUnanswered = [&](int count) {
        for (int reading = 0; reading < count; ++reading) {
            model.readWasSent(now);
            now += 1s;
            model.readFailed(true, now);
        }
    };
    leaveUnanswered(4);
    EXPECT_FALSE(model.isHanging()) << "slow is not gone";
    model.seeked(now);
    leaveUnanswered(4);
    EXPECT_FALSE(model.isHanging()) << "it gave a sign meanwhile";
    leaveUnanswered(1);
    EXPECT_TRUE(model.isHanging());
    const double before = position();
    now += 10s;
    EXPECT_EQ(position(), before);
    player = [] { return properties("Playing", "Alba", 20); };
    pass(100ms);
    EXPECT_NEAR(position(), 20, 0.2);
    now += 10s;
    EXPECT_NEAR(position(), 30, 0.2);
}

} // namespace
} // namespace tarnwick::players
