#include "players/mpris/MprisMusic.h"

#include "tests/players/MprisFixture.h"

namespace tarnwick {
namespace {

using players::Change;
namespace terms = players::terms;

using MprisMusicTest = MprisFixture;

TEST_F(MprisMusicTest, WithoutAPlayerMusicDoesNotRun) {
    start();
    EXPECT_FALSE(probe->isRunning());
    EXPECT_EQ(probe->state(), "stopped");
    EXPECT_TRUE(probe->playlists().isEmpty());
    EXPECT_EQ(music->playerName(), "");
    try {
        probe->application()->property(terms::SoundVolume);
        FAIL() << "no error";
    } catch (const script::Error& error) {
        EXPECT_EQ(error.number, script::errors::NotRunning);
    }
}

TEST_F(MprisMusicTest, TellsWhatPlays) {
    const QByteArray cover = picture(qRgb(200, 30, 30));
    player = makePlayer("fake", playing(metadata("Alba", "Nevia", "Lontano",
                                                 {{"xesam:comment", QStringList{"Italy"}},
                                                  {"xesam:genre", QStringList{"Jazz", "Folk"}},
                                                  {"xesam:trackNumber", 4},
                                                  {"xesam:discNumber", 2},
                                                  {"xesam:contentCreated", "2019-05-03T00:00:00"},
                                                  {"mpris:artUrl", "file://" + write("art", cover)}}),
                                        42));
    start();
    EXPECT_EQ(music->playerName(), "fake");
    EXPECT_EQ(probe->state(), "playing");
    EXPECT_EQ(probe->title(), "Alba");
    EXPECT_EQ(probe->artist(), "Nevia");
    EXPECT_EQ(probe->album(), "Lontano");
    EXPECT_EQ(probe->text(terms::Genre), "Jazz, Folk");
    EXPECT_EQ(probe->text(terms::Comment), "Italy");
    EXPECT_EQ(probe->number(terms::TrackNumber), 4);
    EXPECT_EQ(probe->number(terms::DiscNumber), 2);
    EXPECT_EQ(probe->number(terms::Year), 2019);
    EXPECT_DOUBLE_EQ(probe->real(terms::Duration), 180);
    EXPECT_EQ(probe->cover(), cover);
    EXPECT_EQ(probe->volume(), 50);
    EXPECT_NEAR(probe->position(), 42, 1);
    EXPECT_TRUE(music->capabilities().canGoNext);
    EXPECT_EQ(probe->library(), QStringList{"Alba"});
    EXPECT_EQ(probe->fact(terms::BitRate).asInteger(), 0) << "what nobody knows";
    EXPECT_FALSE(probe->fact(terms::Compilation).asBoolean());
}

TEST_F(MprisMusicTest, FollowsEveryChange) {
    startWith(alba);
    probe->takeChanges();

    player->signal({{"Metadata", metadata("Notturno", "Nevia", "Lontano")}, {"Position", qlonglong{0}}});
    EXPECT_TRUE(eventually([&] { return probe->title() == "Notturno"; }, 600ms));
    EXPECT_TRUE(probe->takeChanges().testFlag(Change::Track));

    player->signal({{"Volume", 0.41999998}});
    EXPECT_TRUE(eventually([&] { return probe->volume() == 42; }));
    EXPECT_TRUE(probe->takeChanges().testFlag(Change::Volume));

    player->signal({{"Shuffle", true}});
    EXPECT_TRUE(eventually([&] { return probe->setting(terms::ShuffleEnabled).asBoolean(); }));

    player->put({{"Position", qlonglong{90000000}}});
    player->seeked(90000000);
    EXPECT_TRUE(eventually([&] { return probe->position() >= 90; }));
    EXPECT_TRUE(probe->takeChanges().testFlag(Change::Position));

    player->signal({{"PlaybackStatus", "Paused"}});
    EXPECT_TRUE(stateBecomes("paused"));
    player->signal({{"PlaybackStatus", "Stopped"}});
    EXPECT_TRUE(stateBecomes("stopped"));
    EXPECT_TRUE(probe->isRunning());
    EXPECT_EQ(probe->title(), "");
}

TEST_F(MprisMusicTest, CommandsReachThePlayer) {
    startWith(alba);
    probe->perform(terms::NextTrack);
    probe->perform(terms::PreviousTrack);
    probe->perform(terms::Pause);
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    EXPECT_EQ(player->calls("Next").size(), 1);
    EXPECT_EQ(player->calls("Previous").size(), 1);
    EXPECT_EQ(player->calls("Pause").size(), 1);

    player->answer("Next", [](const QDBusMessage& call) {
        return call.createErrorReply("org.example.Refused", QString(5000, 'x'));
    });
    probe->perform(terms::NextTrack);
    EXPECT_EQ(music->finishCommands(1s).value_or(""), "fake refused Next: org.example.Refused");
    EXPECT_EQ(music->finishCommands(1s), std::nullopt) << "told once";
}

TEST_F(MprisMusicTest, AVolumeStandsAtOnceAndIsSentSparingly) {
    startWith(alba);
    const auto begin = std::chrono::steady_clock::now();
    for (int volume = 0; volume <= 90; ++volume) {
        probe->application()->setProperty(terms::SoundVolume, script::Value::integer(volume));
        ASSERT_EQ(probe->volume(), volume);
    }
    EXPECT_EQ(music->finishCommands(1s), std::nullopt);
    const auto passed = std::chrono::steady_clock::now() - begin;
    const QStringList sent = player->calls("Set Volume");
    EXPECT_LE(sent.size(), passed / 50ms + 2);
    EXPECT_EQ(sent.last(), "Set Volume 0.9");
    EXPECT_EQ(probe->volume(), 90);
}

TEST_F(MprisMusicTest, AValueThatThePlayerSwallowsIsTakenBack) {
    startWith(alba);
    player->answer("Set", [](const QDBusMessage& call) { return call.createReply(); });
    EXPECT_TRUE(music->capabilities().canShuffle);
    probe->application()->setProperty(terms::ShuffleEnabled, script::Value::boolean(true));
    EXPECT_TRUE(probe->setting(terms::ShuffleEnabled).asBoolean());
    EXPECT_TRUE(eventually([&] { return !probe->setting(terms::ShuffleEnabled).asBoolean(); }));
    EXPECT_TRUE(probe->takeChanges().testFlag(Change::Shuffle));
    EXPECT_FALSE(music->capabilities().canShuffle);
}

TEST_F(MprisMusicTest, APlayerThatHangsBlocksNobodyAndIsRightAgainSoon) {
    startWith(alba);
    player->hang(true);
    const auto begin = std::chrono::steady_clock::now();
    probe->perform(terms::NextTrack);
    probe->application()->setProperty(terms::SoundVolume, script::Value::integer(10));
    EXPECT_EQ(probe->title(), "Alba");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 100ms);
    EXPECT_EQ(music->finishCommands(2s).value_or(""), "fake does not answer");

    player->put({{"Metadata", metadata("Notturno", "Nevia", "Lontano")}});
    player->hang(false);
    EXPECT_TRUE(eventually([&] { return probe->title() == "Notturno"; }, 1500ms));
}

TEST_F(MprisMusicTest, OneThatNeverAnswersHidesNoOther) {
    FakePlayer mute(bus.address(), "aaa");
    mute.hang(true);
    mute.appear();
    startWith(alba);
    EXPECT_EQ(probe->title(), "Alba");
}

TEST_F(MprisMusicTest, OneThatNeverSaysWhoItIsIsFollowedByItsName) {
    FakePlayer nameless(bus.address(), "nameless");
    nameless.put(with(playing(alba), {{"PlaybackStatus", "Paused"}}));
    nameless.answer("GetAll", [](const QDBusMessage& call) -> std::optional<QDBusMessage> {
        if (call.arguments().value(0) == "org.mpris.MediaPlayer2")
            return std::nullopt;
        return call.createReply(with(playing(alba), {{"PlaybackStatus", "Paused"}}));
    });
    nameless.appear();
    start();
    EXPECT_TRUE(eventually([&] { return probe->state() == "paused"; }, 20s));
    EXPECT_EQ(music->playerName(), "nameless");
    EXPECT_EQ(probe->title(), "Alba");
}

TEST_F(MprisMusicTest, OneThatTakesItsNameBeforeItCanAnswerIsAskedAgain) {
    FakePlayer early(bus.address(), "early");
    early.answer("GetAll", [](const QDBusMessage& call) -> std::optional<QDBusMessage> {
        static QStringList asked;
        const QString interface = call.arguments().value(0).toString();
        if (!asked.contains(interface)) {
            asked.append(interface);
            return call.createErrorReply(QDBusError::UnknownObject, "not yet");
        }
        if (interface != "org.mpris.MediaPlayer2")
            return call.createReply(playing(alba));
        return call.createReply(QVariantMap{{"Identity", "Early Bird"}});
    });
    early.appear();
    start();
    EXPECT_TRUE(
        eventually([&] { return probe->title() == "Alba" && music->playerName() == "Early Bird"; }, 2s));
}

TEST_F(MprisMusicTest, APlayerThatDiesIsGoneAndMayComeBack) {
    startWith(alba);
    player.reset();
    EXPECT_TRUE(eventually([&] { return !probe->isRunning(); }));
    player = makePlayer("fake", playing(metadata("Notturno", "Nevia", "Lontano")));
    EXPECT_TRUE(titleBecomes("Notturno"));
}

TEST_F(MprisMusicTest, AFloodOfSignalsEndsWithTheLastState) {
    startWith(metadata("0", "Nevia", "Lontano"));
    for (int i = 1; i <= 2000; ++i)
        player->signal({{"Metadata", metadata(QString::number(i), "Nevia", "Lontano")}});
    EXPECT_TRUE(eventually([&] { return probe->title() == "2000"; }, 5s));
    EXPECT_LT(probe->announcements(), 60) << "bursts are passed on as one";
}

} // namespace
} // namespace tarnwick
