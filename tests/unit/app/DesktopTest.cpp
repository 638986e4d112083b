#include "app/desktop/DesktopApplication.h"
#include "app/desktop/FontFileChooser.h"
#include "app/desktop/StopSignals.h"
#include "app/program/KeyView.h"
#include "app/program/MenuShortcuts.h"
#include "tests/fakes/Files.h"
#include "tests/fakes/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>
#include <unistd.h>

#include <csignal>
#include <thread>

namespace tarnwick {
namespace {

TEST(DesktopApplication, TheFirstCopyIsAskedAndTheNextTakesOver) {
    const PrivateBus bus;
    ASSERT_FALSE(bus.address().isEmpty());
    auto connect = [&](const char* name) { return QDBusConnection::connectToBus(bus.address(), name); };
    EXPECT_EQ(DesktopApplication::askToShow(connect("early")), DesktopApplication::Answer::NobodyRuns);
    QDBusConnection::disconnectFromBus("early");
    std::optional<DesktopApplication> first(std::in_place, connect("first"), [] { return ":1.7"; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return first->hasName(); }));
    std::optional<DesktopApplication> second(std::in_place, connect("second"), [] { return QString(); });
    QSignalSpy shownFirst(&*first, &DesktopApplication::activated);
    QSignalSpy shownSecond(&*second, &DesktopApplication::activated);
    const auto ask = [&] {
        std::optional<DesktopApplication::Answer> answer;
        const auto shown = [&] { return shownFirst.count() + shownSecond.count(); };
        const auto before = shown();
        std::thread asker([&] { // as another process would, while this one goes on
            answer = DesktopApplication::askToShow(connect("asker"));
            QDBusConnection::disconnectFromBus("asker");
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return shown() > before; }));
        asker.join();
        return answer;
    };
    EXPECT_EQ(ask(), DesktopApplication::Answer::Shown);
    EXPECT_EQ(shownFirst.count(), 1);
    EXPECT_EQ(shownSecond.count(), 0);

    auto whom = QDBusMessage::createMethodCall("org.tarnwick.Tarnwick", "/org/tarnwick/Tarnwick",
                                               "org.freedesktop.DBus.Properties", "Get");
    whom << "org.tarnwick.Tarnwick"
         << "Player";
    const QDBusPendingCall told = connect("asker").asyncCall(whom);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.isFinished(); }));
    EXPECT_EQ(told.reply().arguments().value(0).value<QDBusVariant>().variant(), ":1.7");
    QDBusConnection::disconnectFromBus("asker");

    first.reset();
    QDBusConnection::disconnectFromBus("first");
    EXPECT_TRUE(QTest::qWaitFor([&] { return second->hasName(); }));
    EXPECT_EQ(ask(), DesktopApplication::Answer::Shown);
    EXPECT_EQ(shownSecond.count(), 1);
    second.reset();
    QDBusConnection::disconnectFromBus("second");
}

TEST(StopSignals, ArriveOnTheMainThread) {
    int stops = 0;
    const StopSignals signals([&] { ++stops; });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const int before = stops;
        std::raise(signal);
        EXPECT_TRUE(QTest::qWaitFor([&] { return stops == before + 1; }));
    }
}

TEST(StopSignals, WhoIsToOutliveTheTerminalDoes) {
    std::signal(SIGHUP, SIG_IGN); // as nohup does
    int stops = 0;
    {
        const StopSignals signals([&] { ++stops; });
        std::raise(SIGHUP);
        std::raise(SIGTERM);
        EXPECT_TRUE(QTest::qWaitFor([&] { return stops > 0; }));
        QCoreApplication::processEvents();
        EXPECT_EQ(stops, 1);
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(FontFileChooser, OpensOneAtATimeAndGoesWithItsWindow) {
    QQmlEngine engine;
    auto window = std::make_unique<QQuickWindow>();
    window->show();
    int answers = 0;
    const FontChooser choose = fontFileChooser(engine, [&] { return window.get(); });
    const auto ask = [&] { choose([&](const QStringList& paths) { answers += paths.isEmpty() ? 1 : 100; }); };
    ask();
    EXPECT_EQ(answers, 0) << "it is open";
    ask();
    EXPECT_EQ(answers, 1);
    window = std::make_unique<QQuickWindow>();
    ask();
    EXPECT_EQ(answers, 1) << "the next one opens";
}

TEST(MenuShortcuts, PlainKeysCanBeSwitchedOff) {
    QWindow window;
    menus::MenuModel model;
    QStringList chosen;
    const auto add = [&](const char* title, const QKeySequence& keys) {
        return menus::Entry::command(
            title, [&chosen, title] { chosen.append(title); }, keys);
    };
    MenuShortcuts shortcuts(model, window);
    model.setEntries({add("next", Qt::Key_Right), add("full screen", Qt::Key_F11),
                      add("preferences", Qt::CTRL | Qt::Key_Comma)});
    window.show();
    window.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto press = [&] {
        chosen.clear();
        QTest::keyClick(&window, Qt::Key_Right);
        QTest::keyClick(&window, Qt::Key_F11);
        QTest::keyClick(&window, Qt::Key_Comma, Qt::ControlModifier);
        QCoreApplication::processEvents();
        return chosen;
    };
    EXPECT_EQ(press(), (QStringList{"next", "full screen", "preferences"}));
    shortcuts.setPlainKeysEnabled(false);
    EXPECT_EQ(press(), (QStringList{"full screen", "preferences"}));
}

/// A window with a key view, an item in it and an item over it.
class KeyViewTest : public testing::Test {
protected:
    void SetUp() override {
        keys.setParentItem(window.contentItem());
        inside.setParentItem(&keys);
        over->setParentItem(window.contentItem());
        for (QQuickItem* item : {&inside, over.get()})
            item->setFlag(QQuickItem::ItemIsFocusScope);
        window.show();
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QQuickWindow window;
    KeyView keys;
    QQuickItem inside;
    std::unique_ptr<QQuickItem> over = std::make_unique<QQuickItem>();
};

TEST_F(KeyViewTest, HasTheKeysWheneverNobodyOverItNeedsThem) {
    struct {
        const char* what;
        std::function<void()> go;
    } const ways[] = {
        {"lets go of it", [this] { over->setFocus(false); }},
        {"goes while another window has it",
         [this] {
             QWindow other;
             other.show();
             other.requestActivate();
             EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
             over->setFocus(false);
             window.requestActivate();
             EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
         }},
        {"is destroyed", [this] { over.reset(); }},
    };
    QSignalSpy presses(&keys, &KeyView::keyDown);
    for (const auto& way : ways) {
        over->forceActiveFocus();
        EXPECT_FALSE(keys.hasKeys()) << way.what;
        way.go();
        EXPECT_TRUE(keys.hasKeys()) << way.what;
        presses.clear();
        QTest::keyClick(&window, Qt::Key_Return);
        EXPECT_EQ(presses.count(), 1) << way.what;
    }
}

TEST_F(KeyViewTest, TellsWhatIsPressedAndWhoWantsHelp) {
    QSignalSpy presses(&keys, &KeyView::pressed);
    QSignalSpy helps(&keys, &KeyView::helpWanted);
    keys.forceActiveFocus();
    QTest::keyClick(&window, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(presses.value(presses.size() - 1).value(0).value<QKeyCombination>(), Qt::SHIFT | Qt::Key_Left);
    EXPECT_EQ(helps.count(), 0);
    QTest::keyClick(&window, Qt::Key_F1);
    QTest::keyClick(&window, Qt::Key_Question, Qt::ShiftModifier);
    EXPECT_EQ(helps.count(), 2);
    presses.clear();
    QTest::keyClick(&window, Qt::Key_Tab);
    EXPECT_EQ(presses.count(), 0) << "it moves the focus";
}

TEST_F(KeyViewTest, LeavesTheFocusToWhatIsInIt) {
    inside.forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(keys.hasKeys());
    EXPECT_TRUE(inside.hasActiveFocus());
}

} // namespace
} // namespace tarnwick
