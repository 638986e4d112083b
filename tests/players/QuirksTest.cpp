// How real players behave, one behaviour a row: what a fake player says and does, and what has to be made
// of it. Whatever happens, no property is ever asked for alone: one player dies of that, another never
// answers.

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/images/ImageStore.h"
#include "platform/musicapp/mpris/MprisMusic.h"
#include "tests/fakes/FakePlayer.h"
#include "tests/fakes/MusicProbe.h"
#include "tests/fakes/PrivateBus.h"

#include <QBuffer>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QImage>
#include <QTemporaryDir>
#include <QUrl>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace tarnwick {
namespace {

using musicapp::Change;
namespace terms = musicapp::terms;
using namespace std::chrono_literals;

QByteArray picture(int size, int quality = -1) {
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(qRgb(40, size % 256, 90));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG", quality);
    return bytes;
}

/// All that a row may use.
struct Stage {
    FakePlayer& player;
    MusicProbe& probe;
    musicapp::MprisMusic& music;
    const QTemporaryDir& folder;

    bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds timeout = 3s) const {
        return probe.eventually(condition, timeout);
    }
    bool titleBecomes(const QString& title) const {
        return eventually([&] { return probe.title() == title; });
    }
    bool stateBecomes(const QString& state) const {
        return eventually([&] { return probe.state() == state; });
    }
    /// Whether `condition` holds all the time that a player would take to be believed.
    bool stays(const std::function<bool()>& condition) const {
        return !eventually([&] { return !condition(); }, 900ms);
    }
    void pass(std::chrono::milliseconds time) const {
        eventually([] { return false; }, time);
    }
    bool wasSeenStopped() const {
        const QStringList history = probe.takeHistory();
        return std::any_of(history.begin(), history.end(),
                           [](const QString& seen) { return seen.startsWith("stopped"); });
    }
    QString write(const QString& name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
};

QVariantMap without(QVariantMap map, const QStringList& keys) {
    for (const QString& key : keys)
        map.remove(key);
    return map;
}

QVariantMap with(QVariantMap map, const QVariantMap& more) {
    for (auto entry = more.begin(); entry != more.end(); ++entry)
        map.insert(entry.key(), entry.value());
    return map;
}

const QVariantMap alba = metadata("Alba", "Nevia", "Lontano");
const QVariantMap notte = metadata("Notte", "Nevia", "Lontano", {{"mpris:length", qlonglong{240000000}}});

struct Row {
    const char* name;
    QVariantMap properties;
    std::function<void(const Stage&)> play;
    QString busName = QStringLiteral("fake");
};

void PrintTo(const Row& row, std::ostream* stream) { *stream << row.name; }

class Quirks : public testing::TestWithParam<Row> {};

TEST_P(Quirks, AreSurvived) {
    PrivateBus bus;
    QTemporaryDir folder;
    FakePlayer player(bus.address(), GetParam().busName);
    player.put(GetParam().properties);
    dispatch::SystemDispatcher dispatcher;
    images::ImageStore images(dispatcher);
    musicapp::MprisMusic music({.busAddress = bus.address()}, dispatcher, images);
    {
        MusicProbe probe(music);
        player.appear();
        ASSERT_TRUE(probe.eventually([&] { return probe.isRunning(); }));
        GetParam().play({player, probe, music, folder});
    }
    for (const QString& call : player.calls())
        EXPECT_FALSE(call == "Get" || call.startsWith("Get ")) << call.toStdString();
}

const std::vector<Row> rows{
    // What the metadata look like
    {"TextsForListsAndListsForTexts", // Sayonara, VLC, Spotify
     playing({{"mpris:trackid", "spotify:track:1"},
              {"xesam:title", QStringList{"Alba"}},
              {"xesam:artist", "Nevia"},
              {"xesam:album", QStringList{"Lontano", ""}},
              {"xesam:genre", "Jazz"},
              {"xesam:tracknumber", "4/12"},
              {"xesam:DiscNumber", "2"},
              {"XESAM:COMMENT", QStringList{"Italy,Italy"}},
              {"mpris:length", 180000000U}}),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.title(), "Alba");
         EXPECT_EQ(stage.probe.artist(), "Nevia");
         EXPECT_EQ(stage.probe.album(), "Lontano");
         EXPECT_EQ(stage.probe.text(terms::Genre), "Jazz");
         EXPECT_EQ(stage.probe.text(terms::Comment), "Italy");
         EXPECT_EQ(stage.probe.number(terms::TrackNumber), 4);
         EXPECT_EQ(stage.probe.number(terms::DiscNumber), 2);
         EXPECT_DOUBLE_EQ(stage.probe.real(terms::Duration), 180);
     }},
    {"RawTagsAsKeys", // Celluloid, Strawberry
     playing(with(without(alba, {"xesam:trackNumber"}),
                  {{"track", "2/9"}, {"disc", "1/2"}, {"year", 1994}, {"grouping", "Notturni"}, {"bitrate", 320}})),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.number(terms::TrackNumber), 2);
         EXPECT_EQ(stage.probe.number(terms::DiscNumber), 1);
         EXPECT_EQ(stage.probe.number(terms::DiscCount), 2);
         EXPECT_EQ(stage.probe.number(terms::Year), 1994);
         EXPECT_EQ(stage.probe.text(terms::Grouping), "Notturni");
         EXPECT_EQ(stage.probe.number(terms::BitRate), 320);
     }},
    {"ADateThatIsNoMoment", // VLC
     playing(with(alba, {{"xesam:contentCreated", "2007-05-03"}, {"sayonara:bitrate", 256000}})),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.number(terms::Year), 2007);
         EXPECT_EQ(stage.probe.number(terms::BitRate), 256);
     }},
    {"TodayIsNoReleaseDate", // Strawberry tells when the file was made
     playing(with(alba, {{"xesam:contentCreated", QDateTime::currentDateTime().toString(Qt::ISODate)}})),
     [](const Stage& stage) { EXPECT_TRUE(stage.probe.fact(terms::Year).isNothing()); }},
    {"EmptyTextsAreNone", // many
     playing(metadata("Alba", "", "", {{"xesam:genre", QStringList{""}}, {"xesam:comment", ""}})),
     [](const Stage& stage) {
         EXPECT_TRUE(stage.probe.fact(terms::Artist).isMissing());
         EXPECT_TRUE(stage.probe.fact(terms::Album).isMissing());
         EXPECT_TRUE(stage.probe.fact(terms::Genre).isNothing());
         EXPECT_TRUE(stage.probe.fact(terms::Comment).isNothing());
     }},
    {"NoTrackIdUrlOrLength", // Amberol, radio
     playing(without(alba, {"mpris:trackid", "mpris:length"}), 7),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.title(), "Alba");
         EXPECT_DOUBLE_EQ(stage.probe.real(terms::Duration), 0) << "and the whole reply is not lost for it";
         EXPECT_GE(stage.probe.position(), 7);
     }},
    {"TheLengthIsUnknownAtFirst", // VLC
     playing(with(alba, {{"mpris:length", qlonglong{-1}}})),
     [](const Stage& stage) {
         EXPECT_DOUBLE_EQ(stage.probe.real(terms::Duration), 0);
         stage.player.signal({{"Metadata", alba}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.real(terms::Duration) == 180; }));
     }},
    {"NestedRubbish",
     playing(with(alba, {{"xesam:artist", QVariantMap{{"a", QVariantList{1, QVariantMap{{"b", 2}}}}}},
                         {"xesam:genre", QVariantList{1, true, "Jazz"}},
                         {"xesam:trackNumber", QVariantList{QVariantList{3}}},
                         {"mpris:length", QVariantMap{}},
                         {"xesam:comment", QString(3'000'000, 'x')}})),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.title(), "Alba");
         EXPECT_EQ(stage.probe.album(), "Lontano");
         EXPECT_TRUE(stage.probe.fact(terms::Artist).isMissing());
         EXPECT_LE(stage.probe.text(terms::Comment).size(), 20000);
     }},
    {"AnInternetStream",
     playing(without(metadata("Radio Uno", "", "", {{"xesam:url", "https://radio.example/uno.mp3"}}), {"mpris:length"})),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.text(terms::TrackKind), "Internet audio stream");
         EXPECT_TRUE(stage.probe.fact(terms::Location).isNothing());
     }},
    {"TheTitleFallsBackToTheFile", // mpv says the name of the file
     playing(metadata("prima alba.flac", "", "", {{"xesam:url", "file:///nowhere/prima%20alba.flac"}})),
     [](const Stage& stage) { EXPECT_EQ(stage.probe.title(), "prima alba"); }},

    // When something is playing
    {"PlayingWithNothingLoaded", // mpv
     playing({}),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.state(), "stopped");
         EXPECT_EQ(stage.probe.title(), "");
     }},
    {"PausedWithoutTexts", // Firefox after Stop
     playing(alba),
     [](const Stage& stage) {
         stage.player.signal({{"PlaybackStatus", "Paused"},
                              {"Metadata", metadata("", "", "", {{"xesam:url", "https://page.example/"}})}});
         EXPECT_TRUE(stage.stateBecomes("stopped"));
     }},
    {"StoppedWithLeftoverMetadata", // Sayonara, Celluloid
     with(playing(metadata("Unknown title", "", "")), {{"PlaybackStatus", "Stopped"}}),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.state(), "stopped");
         EXPECT_TRUE(stage.stays([&] { return stage.probe.state() == "stopped"; }));
     }},
    {"StoppedButMoving", // mpv after a list has ended
     with(playing(alba), {{"PlaybackStatus", "Stopped"}}),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.state(), "stopped");
         const auto begin = std::chrono::steady_clock::now();
         stage.player.answer("GetAll", [&, begin](const QDBusMessage& call) {
             const auto passed = std::chrono::steady_clock::now() - begin;
             const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(passed).count();
             return call.createReply(with(with(playing(notte), {{"PlaybackStatus", "Stopped"}}),
                                          {{"Position", qlonglong{microseconds}}}));
         });
         stage.player.signalRaw(QVariantMap{{"Metadata", notte}});
         EXPECT_TRUE(stage.stateBecomes("playing"));
         EXPECT_EQ(stage.probe.title(), "Notte");
         stage.player.answer("GetAll", [](const QDBusMessage& call) {
             return call.createReply(with(with(playing(notte), {{"PlaybackStatus", "Stopped"}}),
                                          {{"Position", qlonglong{0}}}));
         });
         EXPECT_TRUE(stage.eventually([&] {
             stage.probe.position(); // as a poll does
             return stage.probe.state() == "stopped";
         }, 5s));
     }},
    {"StoppedBetweenTwoTracks", // VLC, Elisa
     playing(alba),
     [](const Stage& stage) {
         stage.probe.takeHistory();
         stage.player.signal({{"PlaybackStatus", "Stopped"}});
         stage.player.signal({{"PlaybackStatus", "Stopped"}, {"Metadata", metadata("", "", "")}});
         stage.pass(200ms);
         stage.player.signal({{"Metadata", notte}, {"Position", qlonglong{0}}});
         stage.player.signal({{"PlaybackStatus", "Playing"}});
         EXPECT_TRUE(stage.probe.isAnnounced("Notte"));
         EXPECT_FALSE(stage.wasSeenStopped());
     }},
    {"PausedDuringASeek", // Celluloid
     playing(alba),
     [](const Stage& stage) {
         stage.probe.takeChanges();
         stage.player.signal({{"PlaybackStatus", "Paused"}});
         stage.pass(50ms);
         stage.player.signal({{"PlaybackStatus", "Playing"}, {"Position", qlonglong{60000000}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.position() >= 60; }));
         EXPECT_FALSE(stage.probe.takeChanges().testFlag(Change::State));
     }},
    {"AStopThatNobodyAskedForIsBelievedInTheEnd",
     playing(alba),
     [](const Stage& stage) {
         stage.player.signal({{"PlaybackStatus", "Stopped"}});
         EXPECT_TRUE(stage.stateBecomes("stopped"));
     }},
    {"APauseThatWasAskedForIsBelievedAtOnce",
     playing(alba),
     [](const Stage& stage) {
         stage.player.answer("Pause", [](const QDBusMessage& call) { return call.createReply(); });
         stage.probe.perform(terms::Pause);
         EXPECT_EQ(stage.music.finishCommands(1s), std::nullopt);
         stage.player.signal({{"PlaybackStatus", "Paused"}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.state() == "paused"; }, 350ms));
     }},
    {"TwentySignalsForOneTrack", // Chromium
     playing(metadata("Alba", "Nevia", "Lontano")),
     [](const Stage& stage) {
         stage.probe.takeHistory();
         stage.player.signal({{"PlaybackStatus", "Stopped"}});
         stage.player.signal({{"Metadata", QVariantMap{{"mpris:length", qlonglong{0}}}}});
         QVariantMap growing;
         for (const char* key : {"xesam:title", "xesam:artist", "xesam:album", "mpris:length"}) {
             growing.insert(key, notte.value(key));
             stage.player.signal({{"Metadata", growing}});
             stage.pass(20ms);
         }
         stage.player.signal({{"PlaybackStatus", "Playing"}});
         EXPECT_TRUE(stage.probe.isAnnounced("Notte"));
         EXPECT_EQ(stage.probe.takeHistory(), QStringList{"playing|Notte|Nevia|Lontano|240|0"});
     }},
    {"ASignalForEveryProperty", // Strawberry
     playing(alba),
     [](const Stage& stage) {
         stage.probe.takeHistory();
         for (int time = 0; time < 3; ++time) {
             stage.player.signal({{"Metadata", notte}});
             stage.player.signal({{"CanGoNext", false}});
             stage.player.signal({{"CanGoNext", true}});
             stage.player.signal({{"PlaybackStatus", "Playing"}});
         }
         EXPECT_TRUE(stage.probe.isAnnounced("Notte"));
         EXPECT_EQ(stage.probe.takeHistory().size(), 1);
         EXPECT_TRUE(stage.music.capabilities().canGoNext);
     }},
    {"ABurstWithTwoTracksEndsWithTheSecond", // Elisa
     playing(alba),
     [](const Stage& stage) {
         stage.probe.takeHistory();
         stage.player.signal({{"Metadata", metadata("Mezzo", "Altri", "Altro")}});
         stage.player.signal({{"Metadata", notte}});
         EXPECT_TRUE(stage.probe.isAnnounced("Notte"));
         EXPECT_EQ(stage.probe.takeHistory().size(), 1);
     }},

    // Which track it is
    {"ANewTrackIdAtEveryRead", // Sayonara, Lollypop, mpDris2
     playing(alba, 30),
     [](const Stage& stage) {
         stage.music.waitUntilComplete(1s);
         stage.probe.takeChanges();
         for (int i = 0; i < 5; ++i)
             stage.player.signal({{"Metadata", with(alba, {{"mpris:trackid", QString("/random/%1").arg(i)}})}});
         EXPECT_TRUE(stage.stays([&] { return stage.probe.position() >= 30; })) << "no new track";
         EXPECT_FALSE(stage.probe.takeChanges() & (Change::Track | Change::Library));
     }},
    {"OneTrackIdForAllTracks", // Audacious, Chromium, Firefox
     playing(alba, 100),
     [](const Stage& stage) {
         stage.player.signal({{"Metadata", notte}, {"Position", qlonglong{0}}});
         EXPECT_TRUE(stage.titleBecomes("Notte"));
         EXPECT_LT(stage.probe.position(), 3);
     }},
    {"TheSameTextsWithAnotherLengthAreAnotherTrack",
     playing(alba, 100),
     [](const Stage& stage) {
         stage.player.signal({{"Metadata", with(alba, {{"mpris:length", qlonglong{90000000}}})},
                              {"Position", qlonglong{0}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.real(terms::Duration) == 90; }));
         EXPECT_LT(stage.probe.position(), 3);
     }},
    {"UnchangedMetadataAreNoChange", // mpDris2
     playing(alba),
     [](const Stage& stage) {
         stage.music.waitUntilComplete(1s);
         stage.probe.takeChanges();
         for (int i = 0; i < 5; ++i)
             stage.player.signal({{"Metadata", alba}});
         stage.pass(500ms);
         EXPECT_FALSE(stage.probe.takeChanges().testFlag(Change::Track));
     }},

    // Where in the track it is
    {"SeekedTellsTheOldPlace", // cmus, Firefox
     playing(alba, 10),
     [](const Stage& stage) {
         stage.player.put({{"Position", qlonglong{60000000}}});
         stage.player.seeked(10000000);
         stage.player.seeked(10000000);
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.position() >= 60; }));
     }},
    {"SeekedBeyondTheEnd", // Elisa
     playing(alba, 10),
     [](const Stage& stage) {
         stage.player.put({{"Position", qlonglong{900000000}}});
         stage.player.seeked(900000000);
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.position() == 180; }));
     }},
    {"ThePositionIsMissing", // Rhythmbox while stopped
     without(with(playing(alba), {{"PlaybackStatus", "Stopped"}}), {"Position"}),
     [](const Stage& stage) {
         EXPECT_EQ(stage.probe.position(), 0);
         stage.player.signal({{"PlaybackStatus", "Playing"}, {"Position", qlonglong{5000000}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.position() >= 5; }));
     }},
    {"ThePositionIsAlwaysZero", // Spotify, older
     playing(alba, 0),
     [](const Stage& stage) {
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.position() > 1.6; })) << "it is counted here";
     }},
    {"WholeSecondsDoNotJumpBack", // Rhythmbox, cmus
     playing(alba, 10),
     [](const Stage& stage) {
         const auto begin = std::chrono::steady_clock::now();
         stage.player.answer("GetAll", [begin](const QDBusMessage& call) {
             const auto passed =
                 std::chrono::floor<std::chrono::seconds>(std::chrono::steady_clock::now() - begin);
             return call.createReply(playing(alba, 10.0 + static_cast<double>(passed.count())));
         });
         double last = 0;
         EXPECT_TRUE(stage.eventually([&] {
             const double position = stage.probe.position();
             EXPECT_GE(position, last);
             last = position;
             return position > 13;
         }, 5s));
     }},
    {"ThePositionAdvancesWhilePaused", // Firefox
     with(playing(alba, 30), {{"PlaybackStatus", "Paused"}}),
     [](const Stage& stage) {
         stage.player.seeked(30000000);
         stage.pass(500ms);
         for (int second = 1; second <= 3; ++second) {
             stage.pass(1020ms);
             stage.player.put({{"Position", qlonglong{30000000 + second * 1000000}}});
             EXPECT_NEAR(stage.probe.position(), 30, 0.5);
         }
     }},
    {"ThePositionIsTheOldTracks", // Elisa, Chromium
     playing(alba, 100),
     [](const Stage& stage) {
         stage.player.signal({{"Metadata", notte}, {"Position", qlonglong{100500000}}});
         EXPECT_TRUE(stage.titleBecomes("Notte"));
         EXPECT_LT(stage.probe.position(), 3);
     }},

    // Properties
    {"APropertyOfAWrongTypeIsReadAgain",
     playing(alba),
     [](const Stage& stage) {
         stage.player.put({{"Volume", 0.8}});
         stage.player.signalRaw(QVariantMap{{"Volume", "loud"}, {"Shuffle", 3}, {"PlaybackStatus", 7},
                                            {"Metadata", QStringList{"rubbish"}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.volume() == 80; }));
         EXPECT_EQ(stage.probe.state(), "playing");
         EXPECT_EQ(stage.probe.title(), "Alba");
     }},
    {"TheSameKeyTwice", // VLC
     playing(alba),
     [](const Stage& stage) {
         QDBusArgument map;
         map.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QDBusVariant>());
         for (const double volume : {0.1, 0.7}) {
             map.beginMapEntry();
             map << QString("Volume") << QDBusVariant(volume);
             map.endMapEntry();
         }
         map.endMap();
         stage.player.put({{"Volume", 0.7}});
         stage.player.signalRaw(QVariant::fromValue(map));
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.volume() == 70; }));
     }},
    {"OnlyInvalidated",
     playing(alba),
     [](const Stage& stage) {
         stage.player.put({{"Volume", 0.8}});
         stage.player.signalRaw(QVariantMap(), {"Volume"});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.volume() == 80; }));
     }},
    {"NoShuffleNoVolume", // Elisa, Audacious, Firefox
     without(playing(alba), {"Shuffle", "Volume", "Rate"}),
     [](const Stage& stage) {
         EXPECT_FALSE(stage.music.capabilities().canShuffle);
         EXPECT_FALSE(stage.music.capabilities().canSetVolume);
         EXPECT_TRUE(stage.probe.setting(terms::ShuffleEnabled).isNothing());
         EXPECT_EQ(stage.probe.volume(), -1);
         EXPECT_THROW(stage.probe.application()->setProperty(terms::ShuffleEnabled, script::Value::boolean(true)),
                      script::Error);
         EXPECT_TRUE(stage.player.calls("Set").isEmpty());
     }},
    {"SignalsContradictWhatIsRead", // Sayonara, Lollypop
     playing(alba),
     [](const Stage& stage) {
         stage.player.signalRaw(QVariantMap{{"CanGoNext", false}, {"CanPlay", false}, {"CanPause", false}});
         EXPECT_TRUE(stage.stays([&] { return true; }));
         EXPECT_TRUE(stage.music.capabilities().canGoNext);
         EXPECT_TRUE(stage.music.capabilities().canPlay);
     }},
    {"VolumesFromElsewhere", // rounded, too loud, no number
     playing(alba),
     [](const Stage& stage) {
         for (const auto& [said, percent] : {std::pair(0.41999998, 42), std::pair(1.4, 100), std::pair(-1.0, 0)}) {
             stage.player.signal({{"Volume", said}});
             EXPECT_TRUE(stage.eventually([&] { return stage.probe.volume() == percent; })) << said;
         }
         stage.player.signal({{"Volume", std::numeric_limits<double>::quiet_NaN()}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.volume() == -1; }));
     }},
    {"StopMeansPausedAtTheBeginning", // Quod Libet
     playing(alba, 50),
     [](const Stage& stage) {
         stage.probe.perform(terms::Stop);
         stage.player.signal({{"PlaybackStatus", "Paused"}, {"Position", qlonglong{0}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.state() == "paused" && stage.probe.position() == 0; }));
     }},
    {"SlowIsNotGone",
     playing(alba),
     [](const Stage& stage) {
         stage.player.setDelay(150ms);
         stage.player.signal({{"Metadata", notte}});
         EXPECT_TRUE(stage.titleBecomes("Notte"));
         stage.probe.perform(terms::NextTrack);
         EXPECT_EQ(stage.music.finishCommands(1s), std::nullopt);
     }},
    {"AnErrorForEverything",
     playing(alba),
     [](const Stage& stage) {
         stage.player.answer("GetAll", [](const QDBusMessage& call) {
             return call.createErrorReply("org.freedesktop.DBus.Python.KeyError", QString(100000, 'x'));
         });
         stage.player.signal({{"Metadata", notte}});
         EXPECT_TRUE(stage.titleBecomes("Notte")) << "the signal said it";
     }},
    {"ItLeavesAndComesBack", // Firefox, Clementine
     playing(alba),
     [](const Stage& stage) {
         stage.player.disappear();
         EXPECT_TRUE(stage.eventually([&] { return !stage.probe.isRunning(); }));
         stage.player.put({{"Metadata", notte}});
         stage.player.appear();
         EXPECT_TRUE(stage.titleBecomes("Notte"));
     }},
    {"ANameWithInstance", // Celluloid, VLC
     playing(alba),
     [](const Stage& stage) { EXPECT_EQ(stage.probe.title(), "Alba"); },
     QStringLiteral("fake.instance-1")},

    // Covers
    {"CoversByEveryKindOfAddress",
     playing(alba),
     [](const Stage& stage) {
         int size = 20;
         const auto shows = [&](const QString& address, const QByteArray& bytes) {
             stage.player.signal(
                 {{"Metadata", metadata(QString::number(size), "N", QString::number(size), {{"mpris:artUrl", address}})}});
             EXPECT_TRUE(stage.eventually([&] { return stage.probe.cover() == bytes; }))
                 << address.left(60).toStdString();
             ++size;
         };
         const QByteArray a = picture(200, 100); // as long as real ones are
         const QByteArray b = picture(21);
         const QByteArray c = picture(22);
         const QByteArray d = picture(23);
         shows("data:image/png;base64," + QString::fromLatin1(a.toBase64()), a);
         const QString odd = stage.write("Ünï \"co\" & 100%", b); // no suffix, raw path behind the scheme
         shows("file://" + odd, b);
         const QString half = stage.write("half \"ä.png", c); // half escaped
         shows("file://" + QString(half).replace('"', "%22"), c);
         shows(QString::fromLatin1(QUrl::fromLocalFile(stage.write("weiß.jpg", d)).toEncoded()), d);
     }},
    {"AnotherAddressWithTheSameBytesIsTheSameCover", // Quod Libet, Strawberry
     playing(alba),
     [](const Stage& stage) {
         const QByteArray cover = picture(20);
         stage.player.signal({{"Metadata", with(alba, {{"mpris:artUrl", "file://" + stage.write("a", cover)}})}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.cover() == cover; }));
         stage.music.waitUntilComplete(1s);
         stage.probe.takeChanges();
         stage.player.signal({{"Metadata", with(alba, {{"mpris:artUrl", "file://" + stage.write("b", cover)}})}});
         stage.pass(400ms);
         EXPECT_FALSE(stage.probe.takeChanges().testFlag(Change::Track));
     }},
    {"TheSameAddressOnAnotherTrackIsReadAgain",
     playing(alba),
     [](const Stage& stage) {
         const QByteArray a = picture(20);
         const QByteArray b = picture(21);
         const QVariantMap art{{"mpris:artUrl", "file://" + stage.write("art", a)}};
         stage.player.signal({{"Metadata", with(metadata("A", "N", "A"), art)}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.cover() == a; }));
         stage.write("art", b);
         stage.player.signal({{"Metadata", with(metadata("B", "N", "B"), art)}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.cover() == b; }));
     }},
    {"ACoverIsNeverCarriedToAnotherAlbum",
     playing(alba),
     [](const Stage& stage) {
         const QByteArray a = picture(20);
         stage.player.signal(
             {{"Metadata", metadata("A", "N", "A", {{"mpris:artUrl", "file://" + stage.write("a", a)}})}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.cover() == a; }));
         stage.probe.takeHistory();
         stage.player.signal({{"Metadata", metadata("A2", "N", "A")}});
         EXPECT_TRUE(stage.titleBecomes("A2"));
         EXPECT_EQ(stage.probe.cover(), a) << "within the album it stays";
         stage.player.signal({{"Metadata", metadata("Of others", "M", "A")}});
         EXPECT_TRUE(stage.titleBecomes("Of others"));
         EXPECT_EQ(stage.probe.cover(), QByteArray()) << "albums may have the same name";
         stage.player.signal({{"Metadata", metadata("B", "N", "B")}});
         EXPECT_TRUE(stage.probe.isAnnounced("B"));
         EXPECT_EQ(stage.probe.cover(), QByteArray());
         for (const QString& seen : stage.probe.takeHistory())
             EXPECT_TRUE(!seen.contains("|B|N|B|") || seen.endsWith("|0")) << seen.toStdString();
     }},
    {"AddressesOfWhatIsNoPicture",
     playing(alba),
     [](const Stage& stage) {
         const QString pipe = stage.folder.filePath("pipe");
         ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
         int number = 0;
         for (const QString& address :
              {"file://" + pipe, QString("file:///dev/zero"), "file://" + stage.folder.path(), QString("file:///gone"),
               QString("file://"), QString("data:image/png;base64,AAAA"), QString("data:,"), QString("relative/art.png"),
               "file://" + stage.write("text", "no picture")}) {
             const QString title = QString::number(++number);
             stage.player.signal({{"Metadata", metadata(title, "N", title, {{"mpris:artUrl", address},
                                                                            {"xesam:url", address}})}});
             EXPECT_TRUE(stage.titleBecomes(title)) << address.toStdString();
             EXPECT_EQ(stage.probe.cover(), QByteArray());
         }
     }},

    // Track lists and playlists
    {"AnAlbumFromTheTrackList", // VLC denies having one
     playing(alba),
     [](const Stage& stage) {
         QVariantList paths;
         QList<QDBusObjectPath> ids;
         for (int id = 6; id >= 1; --id)
             ids.append(QDBusObjectPath(QString("/track/%1").arg(id)));
         stage.player.put({{"HasTrackList", false}}, "");
         stage.player.put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
         stage.player.answer("GetTracksMetadata", [](const QDBusMessage& call) {
             QList<QVariantMap> maps;
             for (const QDBusObjectPath& id : qdbus_cast<QList<QDBusObjectPath>>(call.arguments().at(0)))
                 maps.append(metadata(id.path() == "/track/4" ? "Alba" : "Brano " + id.path().right(1), "Nevia",
                                      id.path() == "/track/1" ? "Altro" : "Lontano",
                                      {{"mpris:trackid", QVariant::fromValue(id)}}));
             return call.createReply(QVariant::fromValue(maps));
         });
         stage.player.emitSignal("org.mpris.MediaPlayer2.TrackList", "TrackListReplaced",
                                 {QVariant::fromValue(ids), QVariant::fromValue(ids.first())});
         const QStringList expected{"Brano 6", "Brano 5", "Alba", "Brano 3", "Brano 2"};
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.library() == expected; }));
         const auto tracks = stage.probe.playlist(terms::LibraryPlaylist)
                                 ->elements({.elementClass = terms::Track, .from = 2, .to = 2});
         ASSERT_EQ(tracks.size(), 1U);
         stage.probe.perform(terms::Play, script::Value::object(tracks.front()));
         EXPECT_EQ(stage.music.finishCommands(1s), std::nullopt);
         EXPECT_EQ(stage.player.calls("GoTo"), QStringList{"GoTo /track/5"});
         stage.probe.takeHistory();
         stage.player.signal({{"PlaybackStatus", "Stopped"}});
         stage.pass(200ms);
         stage.player.signal({{"PlaybackStatus", "Playing"}, {"Metadata", metadata("Brano 5", "Nevia", "Lontano")}});
         EXPECT_TRUE(stage.probe.isAnnounced("Brano 5"));
         EXPECT_FALSE(stage.wasSeenStopped()) << "a title that was asked for begins after a gap, too";
     }},
    {"ATrackListThatGrowsWhileItIsRead", // VLC says TrackAdded for each; and a hang of a second and a half
     playing(alba),
     [](const Stage& stage) {
         const auto path = [](int id) { return QDBusObjectPath(QString("/track/%1").arg(id)); };
         const QString interface = "org.mpris.MediaPlayer2.TrackList";
         stage.player.answer("GetTracksMetadata", [](const QDBusMessage& call) {
             QList<QVariantMap> maps;
             for (const QDBusObjectPath& id : qdbus_cast<QList<QDBusObjectPath>>(call.arguments().at(0)))
                 maps.append(metadata(id.path() == "/track/1" ? "Alba" : id.path(), "Nevia", "Lontano"));
             return call.createReply(QVariant::fromValue(maps));
         });
         EXPECT_TRUE(stage.music.waitUntilComplete(1s));
         stage.player.setDelay(30ms);
         QList<QDBusObjectPath> ids;
         for (int id = 1; id <= 9; ++id) {
             ids.append(path(id));
             stage.player.put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
             stage.player.emitSignal(interface, "TrackAdded", {alba, QVariant::fromValue(path(id))});
             stage.pass(10ms);
         }
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.library().size() == 9; }));

         stage.player.hang(true);
         ids.append(path(10));
         stage.player.put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
         stage.player.emitSignal(interface, "TrackAdded", {alba, QVariant::fromValue(path(10))});
         stage.pass(1500ms);
         EXPECT_EQ(stage.probe.library().size(), 9);
         stage.player.hang(false);
         EXPECT_TRUE(stage.eventually([&] { return stage.probe.library().size() == 10; }));
     }},
    {"AnEmptyTrackListIsNone", // Strawberry
     playing(alba),
     [](const Stage& stage) {
         stage.player.put({{"HasTrackList", true}}, "");
         stage.player.put({{"Tracks", QVariant::fromValue(QList<QDBusObjectPath>())}}, ".TrackList");
         EXPECT_TRUE(stage.music.waitUntilComplete(1s));
         EXPECT_EQ(stage.probe.library(), QStringList{"Alba"});
     }},
    {"AnErrorForThePlaylistsIsNone", // Strawberry's count is an empty text
     playing(alba),
     [](const Stage& stage) {
         stage.player.answer("GetPlaylists", [](const QDBusMessage& call) {
             return call.createErrorReply("org.example.NotYet", "");
         });
         stage.player.put({{"PlaylistCount", ""}, {"Orderings", QStringList{"UserDefined"}}}, ".Playlists");
         stage.player.signalRaw(QVariantMap{{"PlaylistCount", ""}}, {}, "org.mpris.MediaPlayer2.Playlists");
         EXPECT_TRUE(stage.eventually([&] { return !stage.player.calls("GetPlaylists 0").isEmpty(); }));
         EXPECT_TRUE(stage.probe.playlists().isEmpty());
         EXPECT_FALSE(stage.music.capabilities().hasPlaylists);
     }},
};

std::string nameOf(const testing::TestParamInfo<Row>& row) { return row.param.name; }

INSTANTIATE_TEST_SUITE_P(Players, Quirks, testing::ValuesIn(rows), nameOf);

} // namespace
} // namespace tarnwick
