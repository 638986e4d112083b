// Covers, track lists and playlists.

#include "tests/players/QuirksFixture.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QUrl>
#include <sys/stat.h>

namespace tarnwick {
namespace {

using players::Change;
namespace terms = players::terms;

const std::vector<Quirk> coverQuirks{
    {"CoversByEveryKindOfAddress", playing(alba),
     [](Quirks& stage) {
         int size = 20;
         const auto shows = [&](const QString& address, const QByteArray& bytes) {
             stage.player->signal({{"Metadata", metadata(QString::number(size), "N", QString::number(size),
                                                         {{"mpris:artUrl", address}})}});
             EXPECT_TRUE(stage.coverBecomes(bytes)) << address.left(60).toStdString();
             ++size;
         };
         const QByteArray a = picture(20, 200, 100); // as long as real ones are
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
     [](Quirks& stage) {
         const QByteArray cover = picture(20);
         stage.player->signal(
             {{"Metadata", with(alba, {{"mpris:artUrl", "file://" + stage.write("a", cover)}})}});
         EXPECT_TRUE(stage.coverBecomes(cover));
         stage.music->waitUntilComplete(1s);
         stage.probe->takeChanges();
         stage.player->signal(
             {{"Metadata", with(alba, {{"mpris:artUrl", "file://" + stage.write("b", cover)}})}});
         stage.pass(400ms);
         EXPECT_FALSE(stage.probe->takeChanges().testFlag(Change::Track));
     }},
    {"TheSameAddressOnAnotherTrackIsReadAgain", playing(alba),
     [](Quirks& stage) {
         const QByteArray a = picture(20);
         const QByteArray b = picture(21);
         const QVariantMap art{{"mpris:artUrl", "file://" + stage.write("art", a)}};
         stage.player->signal({{"Metadata", with(metadata("A", "N", "A"), art)}});
         EXPECT_TRUE(stage.coverBecomes(a));
         stage.write("art", b);
         stage.player->signal({{"Metadata", with(metadata("B", "N", "B"), art)}});
         EXPECT_TRUE(stage.coverBecomes(b));
     }},
    {"ACoverIsNeverCarriedToAnotherAlbum", playing(alba),
     [](Quirks& stage) {
         const QByteArray a = picture(20);
         stage.player->signal(
             {{"Metadata", metadata("A", "N", "A", {{"mpris:artUrl", "file://" + stage.write("a", a)}})}});
         EXPECT_TRUE(stage.coverBecomes(a));
         stage.probe->takeHistory();
         stage.player->signal({{"Metadata", metadata("A2", "N", "A")}});
         EXPECT_TRUE(stage.titleBecomes("A2"));
         EXPECT_EQ(stage.probe->cover(), a) << "within the album it stays";
         stage.player->signal({{"Metadata", metadata("Of others", "M", "A")}});
         EXPECT_TRUE(stage.titleBecomes("Of others"));
         EXPECT_EQ(stage.probe->cover(), QByteArray()) << "albums may have the same name";
         stage.player->signal({{"Metadata", metadata("B", "N", "B")}});
         EXPECT_TRUE(stage.probe->isAnnounced("B"));
         EXPECT_EQ(stage.probe->cover(), QByteArray());
         for (const QString& seen : stage.probe->takeHistory())
             EXPECT_TRUE(!seen.contains("|B|N|B|") || seen.endsWith("|0")) << seen.toStdString();
     }},
    {"AddressesOfWhatIsNoPicture", playing(alba),
     [](Quirks& stage) {
         const QString pipe = stage.folder.filePath("pipe");
         ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
         int number = 0;
         for (const QString& address :
              {"file://" + pipe, QString("file:///dev/zero"), "file://" + stage.folder.path(),
               QString("file:///gone"), QString("file://"), QString("data:image/png;base64,AAAA"),
               QString("data:,"), QString("relative/art.png"),
               "file://" + stage.write("text", "no picture")}) {
             const QString title = QString::number(++number);
             stage.player->signal(
                 {{"Metadata",
                   metadata(title, "N", title, {{"mpris:artUrl", address}, {"xesam:url", address}})}});
             EXPECT_TRUE(stage.titleBecomes(title)) << address.toStdString();
             EXPECT_EQ(stage.probe->cover(), QByteArray());
         }
     }},
};

const std::vector<Quirk> listQuirks{
    {"AnAlbumFromTheTrackList", // VLC denies having one
     playing(alba),
     [](Quirks& stage) {
         QVariantList paths;
         QList<QDBusObjectPath> ids;
         for (int id = 6; id >= 1; --id)
             ids.append(QDBusObjectPath(QString("/track/%1").arg(id)));
         stage.player->put({{"HasTrackList", false}}, "");
         stage.player->put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
         stage.player->answer("GetTracksMetadata", [](const QDBusMessage& call) {
             QList<QVariantMap> maps;
             for (const QDBusObjectPath& id : qdbus_cast<QList<QDBusObjectPath>>(call.arguments().at(0)))
                 maps.append(metadata(id.path() == "/track/4" ? "Alba" : "Brano " + id.path().right(1),
                                      "Nevia", id.path() == "/track/1" ? "Altro" : "Lontano",
                                      {{"mpris:trackid", QVariant::fromValue(id)}}));
             return call.createReply(QVariant::fromValue(maps));
         });
         stage.player->emitSignal("org.mpris.MediaPlayer2.TrackList", "TrackListReplaced",
                                  {QVariant::fromValue(ids), QVariant::fromValue(ids.first())});
         const QStringList expected{"Brano 6", "Brano 5", "Alba", "Brano 3", "Brano 2"};
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->library() == expected; }));
         const auto tracks = stage.probe->playlist(terms::LibraryPlaylist)
                                 ->elements({.elementClass = terms::Track, .from = 2, .to = 2});
         ASSERT_EQ(tracks.size(), 1U);
         stage.probe->perform(terms::Play, script::Value::object(tracks.front()));
         EXPECT_EQ(stage.music->finishCommands(1s), std::nullopt);
         EXPECT_EQ(stage.player->calls("GoTo"), QStringList{"GoTo /track/5"});
         stage.probe->takeHistory();
         stage.player->signal({{"PlaybackStatus", "Stopped"}});
         stage.pass(200ms);
         stage.player->signal(
             {{"PlaybackStatus", "Playing"}, {"Metadata", metadata("Brano 5", "Nevia", "Lontano")}});
         EXPECT_TRUE(stage.probe->isAnnounced("Brano 5"));
         EXPECT_FALSE(stage.wasSeenStopped()) << "a title that was asked for begins after a gap, too";
     }},
    {"ATrackListThatGrowsWhileItIsRead", // VLC says TrackAdded for each; and a hang of a second and a half
     playing(alba),
     [](Quirks& stage) {
         const auto path = [](int id) { return QDBusObjectPath(QString("/track/%1").arg(id)); };
         const QString interface = "org.mpris.MediaPlayer2.TrackList";
         stage.player->answer("GetTracksMetadata", [](const QDBusMessage& call) {
             QList<QVariantMap> maps;
             for (const QDBusObjectPath& id : qdbus_cast<QList<QDBusObjectPath>>(call.arguments().at(0)))
                 maps.append(metadata(id.path() == "/track/1" ? "Alba" : id.path(), "Nevia", "Lontano"));
             return call.createReply(QVariant::fromValue(maps));
         });
         EXPECT_TRUE(stage.music->waitUntilComplete(1s));
         stage.player->setDelay(30ms);
         QList<QDBusObjectPath> ids;
         for (int id = 1; id <= 9; ++id) {
             ids.append(path(id));
             stage.player->put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
             stage.player->emitSignal(interface, "TrackAdded", {alba, QVariant::fromValue(path(id))});
             stage.pass(10ms);
         }
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->library().size() == 9; }));

         stage.player->hang(true);
         ids.append(path(10));
         stage.player->put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
         stage.player->emitSignal(interface, "TrackAdded", {alba, QVariant::fromValue(path(10))});
         stage.pass(1500ms);
         EXPECT_EQ(stage.probe->library().size(), 9);
         stage.player->hang(false);
         EXPECT_TRUE(stage.eventually([&] { return stage.probe->library().size() == 10; }));
     }},
    {"AnEmptyTrackListIsNone", // Strawberry
     playing(alba),
     [](Quirks& stage) {
         stage.player->put({{"HasTrackList", true}}, "");
         stage.player->put({{"Tracks", QVariant::fromValue(QList<QDBusObjectPath>())}}, ".TrackList");
         EXPECT_TRUE(stage.music->waitUntilComplete(1s));
         EXPECT_EQ(stage.probe->library(), QStringList{"Alba"});
     }},
    {"AnErrorForThePlaylistsIsNone", // Strawberry's count is an empty text
     playing(alba),
     [](Quirks& stage) {
         stage.player->answer("GetPlaylists", [](const QDBusMessage& call) {
             return call.createErrorReply("org.example.NotYet", "");
         });
         stage.player->put({{"PlaylistCount", ""}, {"Orderings", QStringList{"UserDefined"}}}, ".Playlists");
         stage.player->signalRaw(QVariantMap{{"PlaylistCount", ""}}, {}, "org.mpris.MediaPlayer2.Playlists");
         EXPECT_TRUE(stage.eventually([&] { return !stage.player->calls("GetPlaylists 0").isEmpty(); }));
         EXPECT_TRUE(stage.probe->playlists().isEmpty());
         EXPECT_FALSE(stage.music->capabilities().hasPlaylists);
     }},
};

INSTANTIATE_TEST_SUITE_P(Covers, Quirks, testing::ValuesIn(coverQuirks), nameOfQuirk);
INSTANTIATE_TEST_SUITE_P(Lists, Quirks, testing::ValuesIn(listQuirks), nameOfQuirk);

} // namespace
} // namespace tarnwick
