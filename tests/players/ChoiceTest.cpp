#include "tests/players/MprisFixture.h"

#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QThread>

namespace tarnwick {
namespace {

namespace terms = players::terms;

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

/// A display that tells whom it shows.
class ShownPlayer : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(owner))));
    }
    QString owner;
};

TEST_F(ChoiceTest, ACommandFollowsWhomTheDisplayShows) {
    const auto first = makePlayer("first", paused(metadata("Uno", "A", "A")));
    const auto second = makePlayer("second", playing(metadata("Due", "B", "B")));
    QThread thread;
    thread.start();
    ShownPlayer shown;
    shown.moveToThread(&thread);
    auto display = QDBusConnection::connectToBus(bus.address(), "shows");
    shown.owner = display.interface()->serviceOwner("org.mpris.MediaPlayer2.first").value();
    display.registerVirtualObject("/org/example/Display", &shown);
    display.registerService("org.example.Display");
    start({.display = "org.example.Display"});
    EXPECT_EQ(music->playerName(), "first") << "although another one plays";
    start({.player = "second", .display = "org.example.Display"});
    EXPECT_EQ(music->playerName(), "second") << "whoever is named counts more";
    display.unregisterService("org.example.Display");
    start({.display = "org.example.Display"});
    EXPECT_EQ(music->playerName(), "second") << "no display runs";
    QDBusConnection::disconnectFromBus("shows");
    thread.quit();
    thread.wait();
}

TEST_F(ChoiceTest, NamesThoseThatCouldBeAskedFor) {
    const auto loud = makePlayer("loud.instance12", playing(metadata("Uno", "A", "A")));
    const auto soft = makePlayer("Soft", paused(metadata("Due", "B", "B")));
    start({.player = "nobody"});
    EXPECT_TRUE(music->playerName().isEmpty());
    EXPECT_EQ(music->playerNames(), (QStringList{"Soft", "loud"}));
    for (const char* name :
         {"org.mpris.MediaPlayer2.loud", "LOUD", "org.mpris.MediaPlayer2.loud.instance12"}) {
        start({.player = name});
        EXPECT_TRUE(titleBecomes("Uno")) << name;
    }
}

TEST_F(ChoiceTest, OneThatOnlyRepeatsOthersIsNone) {
    const auto relay = makePlayer("playerctld", playing(metadata("Uno", "A", "A")));
    start();
    EXPECT_FALSE(probe->isRunning());
}

} // namespace
} // namespace tarnwick
