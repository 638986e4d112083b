#include "app/desktop/DesktopApplication.h"
#include "app/desktop/FontFileChooser.h"
#include "app/desktop/StopSignals.h"
#include "app/program/MenuShortcuts.h"
#include "tests/fakes/Files.h"
#include "tests/fakes/PrivateBus.h"

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
    std::optional<DesktopApplication> first(connect("first"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return first->hasName(); }));
    std::optional<DesktopApplication> second(connect("second"));
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

} // namespace
} // namespace tarnwick
