// What players say of a track, and when it is another one.

#include "tests/players/QuirksFixture.h"

#include <QDateTime>

namespace tarnwick {
namespace {

using players::Change;
namespace terms = players::terms;

const std::vector<Quirk> metadataQuirks{
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
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->title(), "Alba");
         EXPECT_EQ(stage.probe->artist(), "Nevia");
         EXPECT_EQ(stage.probe->album(), "Lontano");
         EXPECT_EQ(stage.probe->text(terms::Genre), "Jazz");
         EXPECT_EQ(stage.probe->text(terms::Comment), "Italy");
         EXPECT_EQ(stage.probe->number(terms::TrackNumber), 4);
         EXPECT_EQ(stage.probe->number(terms::DiscNumber), 2);
         EXPECT_DOUBLE_EQ(stage.probe->real(terms::Duration), 180);
     }},
    {"RawTagsAsKeys", // Celluloid, Strawberry
     playing(with(
         without(alba, {"xesam:trackNumber"}),
         {{"track", "2/9"}, {"disc", "1/2"}, {"year", 1994}, {"grouping", "Notturni"}, {"bitrate", 320}})),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->number(terms::TrackNumber), 2);
         EXPECT_EQ(stage.probe->number(terms::DiscNumber), 1);
         EXPECT_EQ(stage.probe->number(terms::DiscCount), 2);
         EXPECT_EQ(stage.probe->number(terms::Year), 1994);
         EXPECT_EQ(stage.probe->text(terms::Grouping), "Notturni");
         EXPECT_EQ(stage.probe->number(terms::BitRate), 320);
     }},
    {"ADateThatIsNoMoment", // VLC
     playing(with(alba, {{"xesam:contentCreated", "2007-05-03"}, {"sayonara:bitrate", 256000}})),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->number(terms::Year), 2007);
         EXPECT_EQ(stage.probe->number(terms::BitRate), 256);
     }},
    {"TodayIsNoReleaseDate", // Strawberry tells when the file was made
     playing(with(alba, {{"xesam:contentCreated", QDateTime::currentDateTime().toString(Qt::ISODate)}})),
     [](Quirks& stage) { EXPECT_EQ(stage.probe->fact(terms::Year).asInteger(), 0); }},
    {"EmptyTextsAreNone", // many
     playing(metadata("Alba", "", "", {{"xesam:genre", QStringList{""}}, {"xesam:comment", ""}})),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->fact(terms::Artist).asText(), "");
         EXPECT_EQ(stage.probe->fact(terms::Album).asText(), "");
         EXPECT_EQ(stage.probe->fact(terms::Genre).asText(), "");
         EXPECT_EQ(stage.probe->fact(terms::Comment).asText(), "");
     }},
    {"NoTrackIdUrlOrLength", // Amberol, radio
     playing(without(alba, {"mpris:trackid", "mpris:length"}), 7),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->title(), "Alba");
         EXPECT_DOUBLE_EQ(stage.probe->real(terms::Duration), 0) << "and the whole reply is not lost for it";
         EXPECT_GE(stage.probe->position(), 7);
     }},
    {"TheLengthIsUnknownAtFirst", // VLC
     playing(with(alba, {{"mpris:length", qlonglong{-1}}})),
     [](Quirks& stage) {
         EXPECT_DOUBLE_EQ(stage.probe->real(terms::Duration), 0);
         stage.player->signal({{"Metadata", alba}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->real(terms::Duration) == 180; }));
     }},
    {"NestedRubbish",
     playing(with(alba, {{"xesam:artist", QVariantMap{{"a", QVariantList{1, QVariantMap{{"b", 2}}}}}},
                         {"xesam:genre", QVariantList{1, true, "Jazz"}},
                         {"xesam:trackNumber", QVariantList{QVariantList{3}}},
                         {"mpris:length", QVariantMap{}},
                         {"xesam:comment", QString(3'000'000, 'x')}})),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->title(), "Alba");
         EXPECT_EQ(stage.probe->album(), "Lontano");
         EXPECT_EQ(stage.probe->fact(terms::Artist).asText(), "");
         EXPECT_LE(stage.probe->text(terms::Comment).size(), 20000);
     }},
    {"AnInternetStream",
     playing(without(metadata("Radio Uno", "", "", {{"xesam:url", "https://radio.example/uno.mp3"}}),
                     {"mpris:length"})),
     [](Quirks& stage) {
         EXPECT_EQ(stage.probe->text(terms::TrackKind), "Internet audio stream");
         EXPECT_TRUE(stage.probe->fact(terms::Location).isNothing());
     }},
    {"TheTitleFallsBackToTheFile", // mpv says the name of the file
     playing(metadata("prima alba.flac", "", "", {{"xesam:url", "file:///nowhere/prima%20alba.flac"}})),
     [](Quirks& stage) { EXPECT_EQ(stage.probe->title(), "prima alba"); }},
};

const std::vector<Quirk> identityQuirks{
    {"ANewTrackIdAtEveryRead", // Sayonara, Lollypop, mpDris2
     playing(alba, 30),
     [](Quirks& stage) {
         stage.music->waitUntilComplete(1s);
         stage.probe->takeChanges();
         for (int i = 0; i < 5; ++i)
             stage.player->signal(
                 {{"Metadata", with(alba, {{"mpris:trackid", QString("/random/%1").arg(i)}})}});
         EXPECT_TRUE(stage.stays([&] { return stage.probe->position() >= 30; })) << "no new track";
         EXPECT_FALSE(stage.probe->takeChanges() & (Change::Track | Change::Library));
     }},
    {"OneTrackIdForAllTracks", // Audacious, Chromium, Firefox
     playing(alba, 100),
     [](Quirks& stage) {
         stage.player->signal({{"Metadata", notte}, {"Position", qlonglong{0}}});
         EXPECT_TRUE(stage.titleBecomes("Notte"));
         EXPECT_LT(stage.probe->position(), 3);
     }},
    {"TheSameTextsWithAnotherLengthAreAnotherTrack", playing(alba, 100),
     [](Quirks& stage) {
         stage.player->signal(
             {{"Metadata", with(alba, {{"mpris:length", qlonglong{90000000}}})}, {"Position", qlonglong{0}}});
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->real(terms::Duration) == 90; }));
         EXPECT_LT(stage.probe->position(), 3);
     }},
    {"UnchangedMetadataAreNoChange", // mpDris2
     playing(alba),
     [](Quirks& stage) {
         stage.music->waitUntilComplete(1s);
         stage.probe->takeChanges();
         for (int i = 0; i < 5; ++i)
             stage.player->signal({{"Metadata", alba}});
         stage.pass(500ms);
         EXPECT_FALSE(stage.probe->takeChanges().testFlag(Change::Track));
     }},
};

INSTANTIATE_TEST_SUITE_P(Metadata, Quirks, testing::ValuesIn(metadataQuirks), nameOfQuirk);
INSTANTIATE_TEST_SUITE_P(Identity, Quirks, testing::ValuesIn(identityQuirks), nameOfQuirk);

} // namespace
} // namespace tarnwick
