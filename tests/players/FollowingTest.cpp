// Which player is followed, and what its track's album is, when players and the bus are slow, silent or late.

#include "players/mpris/PlayerRoster.h"
#include "tests/fakes/RealPlayer.h"
#include "tests/players/MprisFixture.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QUrl>

#include <future>

namespace tarnwick {
namespace {

namespace terms = players::terms;

QVariantMap with(QVariantMap map, const QVariantMap& more) {
    map.insert(more);
    return map;
}

struct FollowingTest : MprisFixture {
    bool stateBecomes(const QString& state) {
        return probe->eventually([&] { return probe->state() == state; });
    }
    bool follows(const QString& name) {
        return probe->eventually([&] { return music->playerName() == name; });
    }
    /// Whether `condition` holds all the time that a player would take to be believed.
    bool stays(const std::function<bool()>& condition) {
        return !probe->eventually([&] { return !condition(); }, 900ms);
    }
};

// The album of the track

/// Keeps what is to be done in the background from starting.
class HeldBackground {
public:
    explicit HeldBackground(dispatch::Dispatcher& dispatcher) {
        // More than there are threads, whatever the machine.
        for (int i = 0; i < 64; ++i)
            dispatcher.globalQueue(dispatch::QualityOfService::Background).async([end = m_end] {
                end.wait();
            });
    }
    HeldBackground(const HeldBackground&) = delete;
    HeldBackground& operator=(const HeldBackground&) = delete;
    ~HeldBackground() { release(); }

    void release() {
        if (!std::exchange(m_isReleased, true))
            m_promise.set_value();
    }

private:
    std::promise<void> m_promise;
    const std::shared_future<void> m_end{m_promise.get_future()};
    bool m_isReleased = false;
};

struct AlbumTest : FollowingTest {
    const QStringList names{"Alba", "Mattina", "Sera", "Notte"};

    /// The album's files, each named like its title.
    void SetUp() override {
        for (int i = 0; i < names.size(); ++i)
            ASSERT_TRUE(makeSound(pathOf(names[i]),
                                  {{"title", names[i]},
                                   {"artist", "Nevia"},
                                   {"album", "Lontano"},
                                   {"track", QString::number(i + 1)}},
                                  1));
    }
    QString pathOf(const QString& title) const { return folder.filePath(title + ".flac"); }
    QVariantMap inFolder(const QString& title, const QString& artist, const QString& album) const {
        return metadata(
            title, artist, album,
            {{"xesam:url", QString::fromLatin1(QUrl::fromLocalFile(pathOf("Alba")).toEncoded())}});
    }
    bool libraryBecomes(const QStringList& expected) {
        return probe->eventually([&] { return probe->library() == expected; });
    }
    /// A list of two of the album's titles, which the player says nothing more about.
    static void giveTrackList(FakePlayer& player) {
        QList<QDBusObjectPath> ids{QDBusObjectPath("/track/1"), QDBusObjectPath("/track/2")};
        player.put({{"Tracks", QVariant::fromValue(ids)}}, ".TrackList");
        player.answer("GetTracksMetadata", [](const QDBusMessage& call) {
            return call.createReply(QVariant::fromValue(QList<QVariantMap>{
                metadata("Alba", "Nevia", "Lontano"), metadata("Mattina", "Nevia", "Lontano")}));
        });
    }
};

struct AlbumTestWithDelay : AlbumTest, testing::WithParamInterface<std::chrono::milliseconds> {};

TEST_P(AlbumTestWithDelay, AListThatChangesWhileTheFileIsReadDoesNotReplaceTheFolder) {
    player = makePlayer("first", playing(metadata("Prima", "Altri", "Altro")));
    start();
    giveTrackList(*player);
    ASSERT_TRUE(music->waitUntilComplete(3s));
    HeldBackground held(dispatcher);
    player->signal({{"Metadata", inFolder("Alba", "Nevia", "Lontano")}});
    ASSERT_TRUE(titleBecomes("Alba"));
    player->setDelay(GetParam());
    player->emitSignal("org.mpris.MediaPlayer2.TrackList", "TrackAdded",
                       {metadata("Alba", "Nevia", "Lontano"), QVariant::fromValue(QDBusObjectPath("/"))});
    EXPECT_TRUE(stays([&] { return probe->library() != names; })) << "nothing of the folder is known yet";
    held.release();
    EXPECT_TRUE(libraryBecomes(names));
    EXPECT_TRUE(stays([&] { return probe->library() == names; }));
}

INSTANTIATE_TEST_SUITE_P(Lists, AlbumTestWithDelay, testing::Values(0ms, 600ms));

TEST_F(AlbumTest, AnAlbumThatIsNamedLateIsLoadedAgain) {
    player = makePlayer("first", playing(inFolder("Alba.flac", "", "")));
    start();
    EXPECT_TRUE(libraryBecomes(names));
    ASSERT_TRUE(music->waitUntilComplete(3s));
    player->signal({{"Metadata", inFolder("Alba", "Nevia", "Lontano (Deluxe)")}});
    EXPECT_TRUE(probe->eventually([&] { return probe->album() == "Lontano (Deluxe)"; }));
    EXPECT_TRUE(libraryBecomes(names));
    player->signal({{"Metadata", inFolder("Alba", "Nevia", "Lontano")}});
    EXPECT_TRUE(probe->eventually([&] { return probe->album() == "Lontano"; }));
    EXPECT_TRUE(libraryBecomes(names));
}

// Which player counts

TEST_F(FollowingTest, OneThatStartsTheLastSongOfAStoppedOneIsFollowed) {
    const auto first = makePlayer("first", playing(metadata("Alba", "Nevia", "Lontano")));
    start();
    first->signal({{"PlaybackStatus", "Stopped"}});
    ASSERT_TRUE(stateBecomes("stopped"));
    const auto second = makePlayer("second", playing(metadata("Alba", "Nevia", "Lontano")));
    EXPECT_TRUE(stateBecomes("playing"));
    EXPECT_EQ(music->playerName(), "second");
}

TEST_F(FollowingTest, OneThatStartsTheSongOfAPausedOneIsNoEcho) {
    const auto second = makePlayer(
        "second", with(playing(metadata("Alba", "Nevia", "Lontano")), {{"PlaybackStatus", "Paused"}}));
    const auto first = makePlayer("first", playing(metadata("Alba", "Nevia", "Lontano")));
    start();
    ASSERT_EQ(music->playerName(), "first");
    first->signal({{"PlaybackStatus", "Paused"}});
    ASSERT_TRUE(stateBecomes("paused"));
    second->signal({{"PlaybackStatus", "Playing"}});
    EXPECT_TRUE(follows("second"));
    EXPECT_TRUE(stateBecomes("playing"));
}

TEST_F(FollowingTest, OneThatHasPlayedTheSongAllAlongIsAnEcho) {
    const auto first = makePlayer("first", playing(metadata("Alba", "Nevia", "Lontano")));
    start();
    const auto second = makePlayer(
        "second", with(playing(metadata("Alba", "Nevia", "Lontano")), {{"PlaybackStatus", "Paused"}}));
    ASSERT_TRUE(probe->eventually([&] { return !second->calls("GetAll .Player").isEmpty(); }));
    second->signal({{"PlaybackStatus", "Playing"}});
    first->signal({{"PlaybackStatus", "Paused"}});
    ASSERT_TRUE(stateBecomes("paused"));
    EXPECT_TRUE(stays([&] { return music->playerName() == "first"; }));
}

TEST_F(FollowingTest, OneThatHangsGivesWayToOneThatStarts) {
    const auto first = makePlayer("first", playing(metadata("Alba", "Nevia", "Lontano"), 10));
    const auto second = makePlayer(
        "second", with(playing(metadata("Notte", "Nevia", "Lontano")), {{"PlaybackStatus", "Paused"}}));
    start();
    ASSERT_EQ(music->playerName(), "first");
    first->hang(true);
    second->signal({{"PlaybackStatus", "Playing"}});
    EXPECT_TRUE(stays([&] { return music->playerName() == "first"; })) << "slow is not gone";
    EXPECT_TRUE(eventually([&] { return probe->title() == "Notte"; }, 20s));
    first->hang(false);
    EXPECT_TRUE(stays([&] { return music->playerName() == "second"; }));
}

TEST_F(FollowingTest, OneThatHangsAloneStandsStillUntilItAnswers) {
    player = makePlayer("first", playing(metadata("Alba", "Nevia", "Lontano"), 10));
    start();
    player->hang(true);
    player->seeked(10000000);
    double last = -1;
    EXPECT_TRUE(probe->eventually(
        [&] {
            const double before = last;
            last = probe->position();
            return last > 11 && last == before;
        },
        20s));
    EXPECT_EQ(probe->state(), "playing");
    player->put({{"Position", qlonglong{60000000}}});
    player->hang(false);
    EXPECT_TRUE(probe->eventually([&] { return probe->position() > 60.5; }));
}

/// How long a player takes to answer, and how often it signals meanwhile.
struct Chatter {
    std::chrono::milliseconds answer;
    std::chrono::milliseconds signal;
};

void PrintTo(const Chatter& chatter, std::ostream* stream) {
    *stream << chatter.answer.count() << " ms to answer, a signal every " << chatter.signal.count() << " ms";
}

struct FollowingTestWithChatter : FollowingTest, testing::WithParamInterface<Chatter> {};

TEST_P(FollowingTestWithChatter, APlayerThatIsNeverQuietIsSeen) {
    player = std::make_unique<FakePlayer>(bus.address(), "first");
    player->put(playing(metadata("Alba", "Nevia", "Lontano"), 100));
    player->setDelay(GetParam().answer);
    start();
    std::promise<void> end;
    auto chatter = std::async(std::launch::async, [&, ended = end.get_future()] {
        for (int i = 0; ended.wait_for(GetParam().signal) == std::future_status::timeout; ++i)
            player->signal({{"Volume", i % 2 == 0 ? 0.5 : 0.6}});
    });
    player->appear();
    EXPECT_TRUE(titleBecomes("Alba"));
    EXPECT_GE(probe->position(), 100);
    end.set_value();
    chatter.wait();
}

INSTANTIATE_TEST_SUITE_P(Chatters, FollowingTestWithChatter,
                         testing::Values(Chatter{150ms, 50ms}, Chatter{5ms, 2ms}));

// Who is there

/// The bus itself as far as a roster asks it, at the other end of a wire.
class FakeBus : public QDBusVirtualObject {
public:
    FakeBus() {
        m_server.setAnonymousAuthenticationAllowed(true);
        QObject::connect(&m_server, &QDBusServer::newConnection, this, [this](const QDBusConnection& client) {
            m_client = std::make_unique<QDBusConnection>(client);
            m_client->registerVirtualObject("/org/freedesktop/DBus", this);
        });
    }

    QString address() const { return m_server.address(); }
    bool isConnected() const { return m_client != nullptr; }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        asked.append(message.member());
        message.setDelayedReply(true);
        if (const auto reply = answer(message))
            connection.send(*reply);
        return true;
    }

    std::function<std::optional<QDBusMessage>(const QDBusMessage&)> answer;
    QStringList asked;

private:
    QDBusServer m_server{QStringLiteral("unix:tmpdir=/tmp")};
    std::unique_ptr<QDBusConnection> m_client;
};

struct RosterTest : testing::Test {
    dispatch::SystemDispatcher dispatcher;
    FakeBus bus;
    std::optional<players::PlayerRoster> roster;
    const QString connection = "tarnwick-roster-test";

    static bool eventually(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + 6s;
        while (!condition() && std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
        return condition();
    }
    void start() {
        const auto client = QDBusConnection::connectToPeer(bus.address(), connection);
        ASSERT_TRUE(eventually([&] { return bus.isConnected(); }));
        roster.emplace(client, dispatcher,
                       players::PlayerRoster::Handlers{.changed = [] {},
                                                       .leaves = [](auto&) {},
                                                       .trackListChanged = [](auto&) {},
                                                       .playlistsChanged = [](auto&) {}});
    }
    void TearDown() override {
        roster.reset();
        QDBusConnection::disconnectFromPeer(connection);
    }
    static QDBusMessage names(const QDBusMessage& call) {
        return call.createReply(QStringList{"org.example", "org.mpris.MediaPlayer2.first"});
    }
};

TEST_F(RosterTest, ABusThatDoesNotAnswerInTimeIsAskedAgain) {
    bus.answer = [&](const QDBusMessage& call) -> std::optional<QDBusMessage> {
        if (bus.asked.count(call.member()) == 1)
            return std::nullopt;
        return call.member() == "ListNames" ? names(call) : call.createReply(QString(":1.7"));
    };
    start();
    EXPECT_FALSE(roster->isComplete());
    ASSERT_TRUE(eventually([&] { return roster->isComplete(); }));
    ASSERT_EQ(roster->links().size(), 1U);
    EXPECT_EQ(roster->links().front()->owner(), ":1.7");
    EXPECT_EQ(bus.asked, (QStringList{"ListNames", "ListNames", "GetNameOwner", "GetNameOwner"}));
}

TEST_F(RosterTest, AnErrorIsNobodysName) {
    bus.answer = [](const QDBusMessage& call) {
        return call.member() == "ListNames" ? names(call)
                                            : call.createErrorReply(QDBusError::AccessDenied, "not for you");
    };
    start();
    ASSERT_TRUE(eventually([&] { return roster->isComplete(); }));
    EXPECT_TRUE(roster->links().empty());
}

TEST_F(RosterTest, ABusThatRefusesTheListHasNone) {
    bus.answer = [](const QDBusMessage& call) {
        return call.createErrorReply(QDBusError::AccessDenied, "no");
    };
    start();
    EXPECT_TRUE(eventually([&] { return roster->isComplete(); }));
    EXPECT_EQ(bus.asked, QStringList{"ListNames"});
}

} // namespace
} // namespace tarnwick
