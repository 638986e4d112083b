// Whether something plays, where in the track, and the other properties of a player.

#include "tests/players/QuirksFixture.h"

#include <QDBusArgument>
#include <QDBusVariant>

namespace tarnwick {
namespace {

using players::Change;
namespace terms = players::terms;

const std::vector<Quirk> stateQuirks{
    {"PlayingWithNothingLoaded", // mpv
     playing({}),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->state(), "stopped");
         EXPECT_EQ(stage.probe->title(), "");
     }},
    {"PausedWithoutTexts", // Firefox after Stop
     playing(alba),
     [](Quirks& stage) {
         stage.player->signal({{"PlaybackStatus", "Paused"},
                               {"Metadata", metadata("", "", "", {{"xesam:url", "https://page.example/"}})}});
         EXPECT_TRUE(stage.stateBecomes("stopped"));
     }},
    {"StoppedWithLeftoverMetadata", // Sayonara, Celluloid
     with(playing(metadata("Unknown title", "", "")), {{"PlaybackStatus", "Stopped"}}),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->state(), "stopped");
         EXPECT_TRUE(stage.stays([&] { return stage.probe->state() == "stopped"; }));
     }},
    {"StoppedButMoving", // mpv after a list has ended
     with(playing(alba), {{"PlaybackStatus", "Stopped"}}),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->state(), "stopped");
         const auto begin = std::chrono::steady_clock::now();
         stage.player->answer("GetAll", [&, begin](const QDBusMessage& call) {
             const auto passed = std::chrono::steady_clock::now() - begin;
             const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(passed).count();
             return call.createReply(with(with(playing(notte), {{"PlaybackStatus", "Stopped"}}),
                                          {{"Position", qlonglong{microseconds}}}));
         });
         stage.player->signalRaw(QVariantMap{{"Metadata", notte}});
         EXPECT_TRUE(stage.stateBecomes("playing"));
         EXPECT_EQ(stage.probe->title(), "Notte");
         stage.player->answer("GetAll", [](const QDBusMessage& call) {
             return call.createReply(
                 with(with(playing(notte), {{"PlaybackStatus", "Stopped"}}), {{"Position", qlonglong{0}}}));
         });
         EXPECT_TRUE(stage.eventually(
             [&] {
                 stage.probe->position(); // as a poll does
                 return stage.probe->state() == "stopped";
             },
             5s));
     }},
    {"StoppedBetweenTwoTracks", // VLC, Elisa
     playing(alba),
     [](Quirks& stage) {
         stage.probe->takeHistory();
         stage.player->signal({{"PlaybackStatus", "Stopped"}});
         stage.player->signal({{"PlaybackStatus", "Stopped"}, {"Metadata", metadata("", "", "")}});
         stage.pass(200ms);
         stage.player->signal({{"Metadata", notte}, {"Position", qlonglong{0}}});
         stage.player->signal({{"PlaybackStatus", "Playing"}});
         EXPECT_TRUE(stage.probe->isAnnounced("Notte"));
         EXPECT_FALSE(stage.wasSeenStopped());
     }},
    {"PausedDuringASeek", // Celluloid
     playing(alba),
     [](Quirks& stage) {
         stage.probe->takeChanges();
         stage.player->signal({{"PlaybackStatus", "Paused"}});
         stage.pass(50ms);
         stage.player->signal({{"PlaybackStatus", "Playing"}, {"Position", qlonglong{60000000}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->position() >= 60; }));
         EXPECT_FALSE(stage.probe->takeChanges().testFlag(Change::State));
     }},
    {"AStopThatNobodyAskedForIsBelievedInTheEnd", playing(alba),
     [](Quirks& stage) {
         stage.player->signal({{"PlaybackStatus", "Stopped"}});
         EXPECT_TRUE(stage.stateBecomes("stopped"));
     }},
    {"APauseThatWasAskedForIsBelievedAtOnce", playing(alba),
     [](Quirks& stage) {
         stage.player->answer("Pause", [](const QDBusMessage& call) { return call.createReply(); });
         stage.probe->perform(terms::Pause);
         EXPECT_EQ(stage.music->finishCommands(1s), std::nullopt);
         stage.player->signal({{"PlaybackStatus", "Paused"}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->state() == "paused"; }, 550ms));
     }},
    {"TwentySignalsForOneTrack", // Chromium
     playing(alba),
     [](Quirks& stage) {
         stage.probe->takeHistory();
         stage.player->signal({{"PlaybackStatus", "Stopped"}});
         stage.player->signal({{"Metadata", QVariantMap{{"mpris:length", qlonglong{0}}}}});
         QVariantMap growing;
         for (const char* key : {"xesam:title", "xesam:artist", "xesam:album", "mpris:length"}) {
             growing.insert(key, notte.value(key));
             stage.player->signal({{"Metadata", growing}});
             stage.pass(20ms);
         }
         stage.player->signal({{"PlaybackStatus", "Playing"}});
         EXPECT_TRUE(stage.probe->isAnnounced("Notte"));
         EXPECT_EQ(stage.probe->takeHistory(), QStringList{"playing|Notte|Nevia|Lontano|240|0"});
     }},
    {"ASignalForEveryProperty", // Strawberry
     playing(alba),
     [](Quirks& stage) {
         stage.probe->takeHistory();
         for (int time = 0; time < 3; ++time) {
             stage.player->signal({{"Metadata", notte}});
             stage.player->signal({{"CanGoNext", false}});
             stage.player->signal({{"CanGoNext", true}});
             stage.player->signal({{"PlaybackStatus", "Playing"}});
         }
         EXPECT_TRUE(stage.probe->isAnnounced("Notte"));
         EXPECT_EQ(stage.probe->takeHistory().size(), 1);
         EXPECT_TRUE(stage.music->capabilities().canGoNext);
     }},
    {"ABurstWithTwoTracksEndsWithTheSecond", // Elisa
     playing(alba),
     [](Quirks& stage) {
         stage.probe->takeHistory();
         stage.player->signal({{"Metadata", metadata("Mezzo", "Altri", "Altro")}});
         stage.player->signal({{"Metadata", notte}});
         EXPECT_TRUE(stage.probe->isAnnounced("Notte"));
         EXPECT_EQ(stage.probe->takeHistory().size(), 1);
     }},
};

const std::vector<Quirk> positionQuirks{
    {"SeekedTellsTheOldPlace", // cmus, Firefox
     playing(alba, 10),
     [](Quirks& stage) {
         stage.player->put({{"Position", qlonglong{60000000}}});
         stage.player->seeked(10000000);
         stage.player->seeked(10000000);
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->position() >= 60; }));
     }},
    {"SeekedBeyondTheEnd", // Elisa
     playing(alba, 10),
     [](Quirks& stage) {
         stage.player->put({{"Position", qlonglong{900000000}}});
         stage.player->seeked(900000000);
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->position() == 180; }));
     }},
    {"ThePositionIsMissing", // Rhythmbox while stopped
     without(with(playing(alba), {{"PlaybackStatus", "Stopped"}}), {"Position"}),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->position(), 0);
         stage.player->signal({{"PlaybackStatus", "Playing"}, {"Position", qlonglong{5000000}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->position() >= 5; }));
     }},
    {"ThePositionIsAlwaysZero", // Spotify, older
     playing(alba, 0),
     [](Quirks& stage) {
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->position() > 1.6; })) << "it is counted here";
     }},
    {"WholeSecondsDoNotJumpBack", // Rhythmbox, cmus
     playing(alba, 10),
     [](Quirks& stage) {
         const auto begin = std::chrono::steady_clock::now();
         stage.player->answer("GetAll", [begin](const QDBusMessage& call) {
             const auto passed =
                 std::chrono::floor<std::chrono::seconds>(std::chrono::steady_clock::now() - begin);
             return call.createReply(playing(alba, 10.0 + static_cast<double>(passed.count())));
         });
         double last = 0;
         EXPECT_TRUE(stage.eventually(
             [&] {
                 const double position = stage.probe->position();
                 EXPECT_GE(position, last);
                 last = position;
                 return position > 13;
             },
             5s));
     }},
    {"ThePositionAdvancesWhilePaused", // Firefox
     with(playing(alba, 30), {{"PlaybackStatus", "Paused"}}),
     [](Quirks& stage) {
         stage.player->seeked(30000000);
         stage.pass(500ms);
         for (int second = 1; second <= 3; ++second) {
             stage.pass(1020ms);
             stage.player->put({{"Position", qlonglong{30000000 + second * 1000000}}});
             EXPECT_NEAR(stage.probe->position(), 30, 0.5);
         }
     }},
    {"ThePositionIsTheOldTracks", // Elisa, Chromium
     playing(alba, 100),
     [](Quirks& stage) {
         stage.player->signal({{"Metadata", notte}, {"Position", qlonglong{100500000}}});
         EXPECT_TRUE(stage.titleBecomes("Notte"));
         EXPECT_LT(stage.probe->position(), 3);
     }},
};

const std::vector<Quirk> propertyQuirks{
    {"APropertyOfAWrongTypeIsReadAgain", playing(alba),
     [](Quirks& stage) {
         stage.player->put({{"Volume", 0.8}});
         stage.player->signalRaw(QVariantMap{{"Volume", "loud"},
                                             {"Shuffle", 3},
                                             {"PlaybackStatus", 7},
                                             {"Metadata", QStringList{"rubbish"}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->volume() == 80; }));
         EXPECT_EQ(stage.probe->state(), "playing");
         EXPECT_EQ(stage.probe->title(), "Alba");
     }},
    {"TheSameKeyTwice", // VLC
     playing(alba),
     [](Quirks& stage) {
         QDBusArgument map;
         map.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QDBusVariant>());
         for (const double volume : {0.1, 0.7}) {
             map.beginMapEntry();
             map << QString("Volume") << QDBusVariant(volume);
             map.endMapEntry();
         }
         map.endMap();
         stage.player->put({{"Volume", 0.7}});
         stage.player->signalRaw(QVariant::fromValue(map));
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->volume() == 70; }));
     }},
    {"OnlyInvalidated", playing(alba),
     [](Quirks& stage) {
         stage.player->put({{"Volume", 0.8}});
         stage.player->signalRaw(QVariantMap(), {"Volume"});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->volume() == 80; }));
     }},
    {"NoShuffleNoVolume", // Elisa, Audacious, Firefox
     without(playing(alba), {"Shuffle", "Volume", "Rate"}),
     [](Quirks& stage) {
         EXPECT_FALSE(stage.music->capabilities().canShuffle);
         EXPECT_FALSE(stage.music->capabilities().canSetVolume);
         EXPECT_TRUE(stage.probe->setting(terms::ShuffleEnabled).isNothing());
         EXPECT_EQ(stage.probe->volume(), -1);
         EXPECT_THROW(
             stage.probe->application()->setProperty(terms::ShuffleEnabled, script::Value::boolean(true)),
             script::Error);
         EXPECT_TRUE(stage.player->calls("Set").isEmpty());
     }},
    {"SignalsContradictWhatIsRead", // Sayonara, Lollypop
     playing(alba),
     [](Quirks& stage) {
         stage.player->signalRaw(QVariantMap{{"CanGoNext", false}, {"CanPlay", false}, {"CanPause", false}});
         EXPECT_TRUE(stage.stays([&] { return true; }));
         EXPECT_TRUE(stage.music->capabilities().canGoNext);
         EXPECT_TRUE(stage.music->capabilities().canPlay);
     }},
    {"VolumesFromElsewhere", // rounded, too loud, no number
     playing(alba),
     [](Quirks& stage) {
         for (const auto& [said, percent] :
              {std::pair(0.41999998, 42), std::pair(1.4, 100), std::pair(-1.0, 0)}) {
             stage.player->signal({{"Volume", said}});
             EXPECT_TRUE(stage.eventually([&] { return stage.probe->volume() == percent; })) << said;
         }
         stage.player->signal({{"Volume", std::numeric_limits<double>::quiet_NaN()}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->volume() == -1; }));
     }},
    {"StopMeansPausedAtTheBeginning", // Quod Libet
     playing(alba, 50),
     [](Quirks& stage) {
         stage.probe->perform(terms::Stop);
         stage.player->signal({{"PlaybackStatus", "Paused"}, {"Position", qlonglong{0}}});
         EXPECT_TRUE(stage.eventually(
             [&] { return stage.probe->state() == "paused" && stage.probe->position() == 0; }));
     }},
    {"SlowIsNotGone", playing(alba),
     [](Quirks& stage) {
         stage.player->setDelay(150ms);
         stage.player->signal({{"Metadata", notte}});
         EXPECT_TRUE(stage.titleBecomes("Notte"));
         stage.probe->perform(terms::NextTrack);
         EXPECT_EQ(stage.music->finishCommands(1s), std::nullopt);
     }},
    {"AnErrorForEverything", playing(alba),
     [](Quirks& stage) {
         stage.player->answer("GetAll", [](const QDBusMessage& call) {
             return call.createErrorReply("org.freedesktop.DBus.Python.KeyError", QString(100000, 'x'));
         });
         stage.player->signal({{"Metadata", notte}});
         EXPECT_TRUE(stage.titleBecomes("Notte")) << "the signal said it";
     }},
    {"ItLeavesAndComesBack", // Firefox, Clementine
     playing(alba),
     [](Quirks& stage) {
         stage.player->disappear();
         EXPECT_TRUE(stage.eventually([&] { return !stage.probe->isRunning(); }));
         stage.player->put({{"Metadata", notte}});
         stage.player->appear();
         EXPECT_TRUE(stage.titleBecomes("Notte"));
     }},
    {"ANameWithInstance", // Celluloid, VLC
     playing(alba), [](Quirks& stage) { EXPECT_EQ(stage.probe->title(), "Alba"); },
     QStringLiteral("fake.instance-1")},
};

INSTANTIATE_TEST_SUITE_P(State, Quirks, testing::ValuesIn(stateQuirks), nameOfQuirk);
INSTANTIATE_TEST_SUITE_P(Position, Quirks, testing::ValuesIn(positionQuirks), nameOfQuirk);
INSTANTIATE_TEST_SUITE_P(Properties, Quirks, testing::ValuesIn(propertyQuirks), nameOfQuirk);

} // namespace
} // namespace tarnwick
