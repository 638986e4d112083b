// Does what people do at the display in an order of chance, and looks after each thing that the display is as
// it must be. Usage: sequence_driver PROGRAM PROBE COUNT SEED; see `sequences`.

#include "tests/desktop/sequence/Person.h"
#include "tests/desktop/sequence/ProbedProgram.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>

#include <cstdio>
#include <random>
#include <stdexcept>
#include <thread>

using namespace std::chrono_literals;
using namespace tarnwick;

namespace {

enum Key : xcb_keysym_t {
    Tab = 0xff09,
    Return = 0xff0d,
    Escape = 0xff1b,
    Left = 0xff51,
    Up = 0xff52,
    Right = 0xff53,
    Down = 0xff54,
    Menu = 0xff67,
    F11 = 0xffc8,
    Comma = 0x2c,
    LetterW = 0x77,
};

const QRect home(300, 200, 800, 400);

/// The server repeats a key after 660 ms, and then every 40.
constexpr qint64 longHeld = 900;

/// What is not so by then will not be.
constexpr qint64 patience = 10'000; // ms

constexpr int edge = 24; ///< here the window is resized, in pixels

struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One person at one program.
class Session {
public:
    Session(const QString& program, const QString& probe) : m_program(program, probe) {
        if (!look().is("isReady"))
            throw Fault("the program does not start:\n" + m_program.takeLog().toStdString());
        goHome();
    }

    /// Does some things, and then sees whether the display still obeys; ends as it began.
    void play(unsigned seed) {
        m_chance.seed(seed);
        m_done.clear();
        const int length = pick(2, 8);
        for (int i = 0; i < length; ++i)
            doSomething();
        if (seed % 8 == 0) // it takes a second
            holdSomething();
        finish();
    }

    const QStringList& done() const { return m_done; }
    ProgramState look() {
        m_person.catchUp();
        m_program.state();
        m_person.catchUp(); // what the program has asked of it meanwhile
        return m_program.state();
    }

private:
    using Condition = std::function<bool(const ProgramState&)>;

    int pick(int least, int greatest) { return std::uniform_int_distribution(least, greatest)(m_chance); }
    QPoint somewhere(const QRect& place) {
        return {pick(place.left() + edge, place.right() - edge),
                pick(place.top() + edge, place.bottom() - edge)};
    }

    /// Waits until it is so.
    ProgramState expect(const QString& what, const Condition& isSo) {
        QElapsedTimer timer;
        timer.start();
        for (;;) {
            const ProgramState now = look();
            if (now.all.isEmpty())
                throw Fault("the program has gone:\n" + m_program.takeLog().toStdString());
            if (isSo(now))
                return now;
            if (timer.elapsed() > patience)
                throw Fault(qPrintable(what + ", but: " + QString::fromUtf8(QJsonDocument(now.all).toJson()) +
                                       m_program.takeLog()));
            std::this_thread::sleep_for(4ms);
        }
    }

    /// What holds at every moment of rest.
    void checkRest() {
        const ProgramState now = expect("the keys belong to what is on top", [](const ProgramState& state) {
            const QString keyboard = state.text("keyboard"), focus = state.text("focus");
            if (keyboard != u"Tarnwick" && state.text("popups").contains(u"menu"))
                return false; // it goes as any menu does
            if (!state.isThere())
                return keyboard != u"Tarnwick" || focus.isEmpty();
            if (keyboard == u"Preferences")
                return state.number("preferences") > 0;
            return keyboard == u"Tarnwick" &&
                   (state.popups() > 0 ? focus == u"over" : focus == u"keys" || focus == u"inside");
        });
        if (now.number("preferences") > 0 && now.isThere()) {
            const auto windows = m_person.stacking();
            if (!windows.isEmpty() && windows.last() == now.window())
                throw Fault("the preferences are below the display");
        }
        if (m_program.skips() != m_skips)
            throw Fault(qPrintable(QString("the player was told to skip %1 times instead of %2")
                                       .arg(m_program.skips())
                                       .arg(m_skips)));
        if (const QString said = m_program.takeLog(); !said.isEmpty())
            throw Fault("it said: " + said.toStdString());
    }

    void doSomething() {
        const ProgramState now = look();
        if (!now.isThere()) {
            showAgain();
        } else if (now.text("keyboard") == u"Preferences") {
            inPreferences(now);
        } else {
            inDisplay(now);
        }
        checkRest();
    }

    void inPreferences(const ProgramState& now) {
        switch (pick(0, 3)) {
        case 0:
            note("close the preferences");
            m_person.press(LetterW, true);
            expect("the preferences close", [&](const ProgramState& state) {
                return state.number("preferences") < now.number("preferences") &&
                       state.text("keyboard") == u"Tarnwick";
            });
            break;
        case 1:
            pressHere("Escape in the preferences", Escape, now);
            break;
        case 2:
            pressHere("Tab in the preferences", Tab, now);
            break;
        default:
            note("show, with the preferences open");
            m_program.show();
            expect("the display has the keyboard",
                   [](const ProgramState& state) { return state.text("keyboard") == u"Tarnwick"; });
        }
    }

    void inDisplay(const ProgramState& now) {
        static constexpr void (Session::*things[])(const ProgramState&) = {
            &Session::rightClick,
            &Session::rightClick,
            &Session::pressEscape,
            &Session::pressEscape,
            &Session::pressReturn,
            &Session::pressArrow,
            &Session::pressArrow,
            &Session::drag,
            &Session::drag,
            &Session::drag,
            &Session::hover,
            &Session::pressTab,
            &Session::pressF11,
            &Session::minimise,
            &Session::hide,
            &Session::openPreferences,
            &Session::menuByKey,
            &Session::minimiseAndClose,
            &Session::minimiseAndClose,
        };
        (this->*things[pick(0, int(std::size(things)) - 1)])(now);
    }

    /// A key that changes nothing of what is looked at.
    void pressHere(const QString& name, Key key, const ProgramState& now) {
        note(name);
        m_person.press(key);
        expectUnchanged(name, now);
    }

    void expectUnchanged(const QString& name, const ProgramState& before) {
        expect(name + " changes nothing", [&](const ProgramState& state) {
            for (const char* what : {"isVisible", "isMinimised", "isFullScreen", "isFlipped", "preferences"})
                if (state.all.value(QLatin1String(what)) != before.all.value(QLatin1String(what)))
                    return false;
            return true;
        });
    }

    void rightClick(const ProgramState& now) {
        const QPoint place = somewhere(now.place());
        note(QString("right click at %1, %2").arg(place.x()).arg(place.y()));
        m_person.click(place, XCB_BUTTON_INDEX_3);
        if (now.number("preferences") == 0 && now.popups() == 0 && !now.is("hasPicker"))
            expect("the menu opens", [](const ProgramState& state) { return state.popups() > 0; });
        else
            look();
    }

    void menuByKey(const ProgramState& now) {
        if (now.is("hasPicker"))
            return;
        note("the menu key");
        m_person.press(Menu);
        expect("the menu opens", [](const ProgramState& state) { return state.popups() > 0; });
    }

    void pressEscape(const ProgramState& now) {
        note("Escape");
        m_person.press(Escape);
        expectEscaped(now);
    }

    void expectEscaped(const ProgramState& now) {
        expect("Escape does one thing", [&](const ProgramState& state) {
            const bool isFlipped = state.is("isFlipped"), fills = state.is("isFullScreen");
            if (now.popups() > 0)
                return state.popups() < now.popups() && isFlipped == now.is("isFlipped") &&
                       fills == now.is("isFullScreen");
            if (now.is("isFlipped"))
                return !isFlipped && fills == now.is("isFullScreen");
            return !isFlipped && !fills;
        });
    }

    void pressReturn(const ProgramState& now) {
        const QString entry = now.text("entry");
        if (entry == u"Quit")
            return;
        note(now.popups() > 0 ? "Return on " + entry : QString("Return"));
        if (entry == u"Next Track" || entry == u"Previous Track")
            expectSkips(1);
        m_person.press(Return);
        if (now.popups() > 0)
            waitForSkips();
        else
            expectTurned(now);
    }

    void expectTurned(const ProgramState& before) {
        expect("Return turns the cover", [was = before.is("isFlipped")](const ProgramState& state) {
            return state.is("isFlipped") != was;
        });
    }

    void pressArrow(const ProgramState& now) {
        static constexpr std::pair<Key, const char*> arrows[] = {
            {Left, "Left"}, {Right, "Right"}, {Up, "Up"}, {Down, "Down"}};
        const auto& [key, name] = arrows[pick(0, 3)];
        note(name);
        if ((key == Left || key == Right) && now.popups() == 0)
            expectSkips(1);
        m_person.press(key);
        waitForSkips();
        expectUnchanged(name, now);
    }

    void drag(const ProgramState& now) {
        const QPoint from = somewhere(now.place());
        const QPoint off = now.place().center() - home.center(); // not away from the screen
        const auto by = [this](int has) {
            const bool back = std::abs(has) > 150 ? has > 0 : pick(0, 1) == 1;
            return (back ? -1 : 1) * pick(40, 120);
        };
        const QPoint way(by(off.x()), by(off.y()));
        note(QString("drag from %1, %2 by %3, %4").arg(from.x()).arg(from.y()).arg(way.x()).arg(way.y()));
        const bool isFree = now.number("preferences") == 0 && now.popups() == 0 && !now.is("isFullScreen") &&
                            !now.is("hasBar");
        m_person.drag(from, way);
        if (isFree)
            expect("the window goes with the pointer", [&](const ProgramState& state) {
                const QPoint gone = state.place().topLeft() - now.place().topLeft();
                return gone.x() * way.x() > 0 && gone.y() * way.y() > 0;
            });
        expectUnchanged("a drag", now);
    }

    void hover(const ProgramState& now) {
        const QPoint place =
            pick(0, 2) == 0 ? now.place().topLeft() + QPoint(40, 30) : somewhere(now.place());
        note(QString("hover at %1, %2").arg(place.x()).arg(place.y()));
        m_person.moveTo(place);
        expectUnchanged("hovering", now);
    }

    void pressTab(const ProgramState& now) {
        const int times = pick(1, 7);
        note(QString("Tab %1 times").arg(times));
        for (int i = 0; i < times; ++i)
            m_person.press(Tab);
        expectUnchanged("Tab", now);
    }

    void pressF11(const ProgramState& now) {
        note("F11");
        m_person.press(F11);
        expectToggledFullScreen(now);
    }

    void expectToggledFullScreen(const ProgramState& before) {
        expect("F11 toggles full screen", [was = before.is("isFullScreen")](const ProgramState& state) {
            return state.is("isFullScreen") != was;
        });
    }

    void minimise(const ProgramState& now) {
        note("minimise by the taskbar");
        m_person.minimise(now.window());
        expectMinimised();
    }

    void minimiseAndClose(const ProgramState& now) {
        if (!now.hasKeys() || now.number("preferences") > 0) // which may lie over the button
            return;
        note("minimise by the button, restore by the taskbar, close");
        const QPoint corner = now.place().topLeft();
        m_person.moveTo(corner + QPoint(100, 45));
        m_person.moveTo(corner + QPoint(50, 26));
        expect("the buttons are shown", [](const ProgramState& state) { return state.is("hasButtons"); });
        m_person.click(corner + QPoint(50, 26), XCB_BUTTON_INDEX_1);
        expectMinimised();
        m_person.activate(now.window());
        expectShown();
        m_person.press(LetterW, true);
        expectHidden();
    }

    void expectMinimised() {
        expect("it is minimised", [](const ProgramState& state) { return state.is("isMinimised"); });
    }

    void expectShown() {
        expect("it is shown and has the keyboard", [](const ProgramState& state) {
            return state.isThere() && state.text("keyboard") == u"Tarnwick";
        });
    }

    void hide(const ProgramState&) {
        note("close the window");
        m_person.press(LetterW, true);
        expectHidden();
    }

    void expectHidden() {
        expect("it is hidden", [](const ProgramState& state) { return !state.is("isVisible"); });
    }

    void showAgain() {
        note("show");
        m_program.show();
        expectShown();
    }

    void openPreferences(const ProgramState&) {
        note("open the preferences");
        m_person.press(Comma, true);
        expect("the preferences have the keyboard and fit on the screen", [](const ProgramState& state) {
            return state.number("preferences") == 1 && state.text("keyboard") == u"Preferences" &&
                   state.is("preferencesFit");
        });
    }

    /// A key that is held is pressed once: what it did stays as it is.
    void holdSomething() {
        static constexpr std::pair<Key, const char*> keys[] = {
            {Right, "Right"}, {Return, "Return"}, {F11, "F11"}, {Escape, "Escape"}};
        const auto& [key, name] = keys[pick(0, 3)];
        const ProgramState before = look();
        if (!before.hasKeys() || !before.isThere())
            return;
        note(QString("hold %1").arg(name));
        if (key == Right)
            expectSkips(1);
        m_person.hold(key, [&, key = key] {
            QElapsedTimer timer;
            timer.start();
            if (key == Return)
                expectTurned(before);
            else if (key == F11)
                expectToggledFullScreen(before);
            else if (key == Escape)
                expectEscaped(before);
            for (const ProgramState done = look(); timer.elapsed() < longHeld;) {
                const ProgramState now = look();
                if (now.is("isFlipped") != done.is("isFlipped") ||
                    now.is("isFullScreen") != done.is("isFullScreen"))
                    throw Fault("a key that is held acts again");
            }
        });
        waitForSkips();
        checkRest();
    }

    void finish() {
        if (!look().isThere())
            showAgain();
        closeEverything();
        ProgramState now = checkKeys();
        if (now.is("isFlipped")) {
            turn(now);
            now = look();
        }
        turn(now);
        m_person.press(Escape);
        now = expect("Escape turns it back", [fills = now.is("isFullScreen")](const ProgramState& state) {
            return !state.is("isFlipped") && state.is("isFullScreen") == fills;
        });
        if (now.is("isFullScreen")) {
            m_person.press(Escape);
            expect("Escape leaves full screen",
                   [](const ProgramState& state) { return !state.is("isFullScreen"); });
        }
        checkRest();
        goHome();
    }

    void turn(const ProgramState& now) {
        m_person.press(Return);
        expectTurned(now);
    }

    void closeEverything() {
        for (ProgramState now = look(); now.number("preferences") > 0 || now.popups() > 0; now = look()) {
            if (now.popups() > 0 && now.text("keyboard") == u"Tarnwick") {
                m_person.press(Escape);
                expect("Escape closes what is open",
                       [&](const ProgramState& state) { return state.popups() < now.popups(); });
                continue;
            }
            if (now.text("keyboard") == u"Tarnwick") {
                m_person.press(Comma, true);
                expect("the preferences come to the front",
                       [](const ProgramState& state) { return state.text("keyboard") == u"Preferences"; });
            }
            m_person.press(LetterW, true);
            expect("the preferences close", [&](const ProgramState& state) {
                return state.number("preferences") < now.number("preferences");
            });
        }
    }

    ProgramState checkKeys() {
        return expect("the display has the keys", [](const ProgramState& state) { return state.hasKeys(); });
    }

    /// Where every sequence begins.
    void goHome() {
        for (int i = 0; look().text("focus") == u"inside" && i < 10; ++i)
            m_person.press(Tab);
        m_person.moveTo(home.bottomRight() + QPoint(100, 100));
        m_person.place(look().window(), home);
        expect("the display is where it began", [](const ProgramState& state) {
            return state.place() == home && state.hasKeys() && state.text("focus") == u"keys";
        });
    }

    void expectSkips(int more) { m_skips += more; }
    void waitForSkips() {
        expect("the player is told", [this](const ProgramState&) { return m_program.skips() >= m_skips; });
    }
    void note(const QString& what) { m_done.append(what); }

    Person m_person;
    ProbedProgram m_program;
    std::mt19937 m_chance;
    QStringList m_done;
    int m_skips = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 5) {
        std::fprintf(stderr, "usage: sequence_driver PROGRAM PROBE COUNT SEED\n");
        return 2;
    }
    const unsigned count = words[3].toUInt(), first = words[4].toUInt();
    QElapsedTimer timer;
    timer.start();
    std::unique_ptr<Session> session;
    unsigned seed = first;
    try {
        session = std::make_unique<Session>(words[1], words[2]);
        for (; seed - first < count; ++seed) {
            session->play(seed);
            if (qEnvironmentVariableIsSet("VERBOSE"))
                std::printf("%u: %s\n", seed, qPrintable(session->done().join("; ")));
        }
    } catch (const Fault& fault) {
        std::printf("FAIL  %s\n", fault.what());
        if (session)
            std::printf("after: %s\n", qPrintable(session->done().join("\n       ")));
        std::printf("again: tests/desktop/sequences 1 %u\n", seed);
        return 1;
    }
    std::printf("ok    %u sequences in %lld s\n", count, static_cast<long long>(timer.elapsed() / 1000));
    return 0;
}
