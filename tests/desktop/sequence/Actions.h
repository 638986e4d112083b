#pragma once

#include "tests/desktop/sequence/Observer.h"

#include <random>

namespace tarnwick {

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

inline const QRect home(300, 200, 800, 400);

/// The server repeats a key after 660 ms, and then every 40.
inline constexpr qint64 longHeld = 900;

inline constexpr int edge = 24; ///< here the window is resized, in pixels

/// What people do at the display, and what each thing must and must not change.
class Actions {
public:
    explicit Actions(Observer& observer) : m_observer(observer) {}

    /// From here on `seed` decides.
    void begin(unsigned seed) {
        m_chance.seed(seed);
        m_done.clear();
    }

    int pick(int least, int greatest) { return std::uniform_int_distribution(least, greatest)(m_chance); }

    /// One thing that can be done as it is now.
    void doSomething() {
        const ProgramState now = m_observer.look();
        if (!now.isThere()) {
            showAgain();
        } else if (now.text("keyboard") == u"Preferences") {
            inPreferences(now);
        } else {
            inDisplay(now);
        }
        m_observer.checkRest();
    }

    /// A key that is held is pressed once: what it did stays as it is.
    void holdSomething() {
        static constexpr std::pair<Key, const char*> keys[] = {
            {Right, "Right"}, {Return, "Return"}, {F11, "F11"}, {Escape, "Escape"}};
        const auto& [key, name] = keys[pick(0, 3)];
        const ProgramState before = m_observer.look();
        if (!before.hasKeys() || !before.isThere())
            return;
        note(QString("hold %1").arg(name));
        if (key == Right)
            m_observer.expectSkips(1);
        person().hold(key, [&, key = key] {
            QElapsedTimer timer;
            timer.start();
            if (key == Return)
                expectTurned(before);
            else if (key == F11)
                expectToggledFullScreen(before);
            else if (key == Escape)
                expectEscaped(before);
            for (const ProgramState done = m_observer.look(); timer.elapsed() < longHeld;) {
                const ProgramState now = m_observer.look();
                if (now.is("isFlipped") != done.is("isFlipped") ||
                    now.is("isFullScreen") != done.is("isFullScreen"))
                    throw Fault("a key that is held acts again");
            }
        });
        m_observer.waitForSkips();
        m_observer.checkRest();
    }

    void showAgain() {
        note("show");
        program().show();
        expectShown();
    }

    void expectTurned(const ProgramState& before) {
        m_observer.expect("Return turns the cover",
                          [was = before.is("isFlipped")](const ProgramState& state) {
                              return state.is("isFlipped") != was;
                          });
    }

    /// In words, since `begin`.
    const QStringList& done() const { return m_done; }

private:
    Person& person() { return m_observer.person(); }
    ProbedProgram& program() { return m_observer.program(); }
    QPoint somewhere(const QRect& place) {
        return {pick(place.left() + edge, place.right() - edge),
                pick(place.top() + edge, place.bottom() - edge)};
    }
    void note(const QString& what) { m_done.append(what); }

    void inPreferences(const ProgramState& now) {
        switch (pick(0, 3)) {
        case 0:
            note("close the preferences");
            person().press(LetterW, true);
            m_observer.expect("the preferences close", [&](const ProgramState& state) {
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
            program().show();
            m_observer.expect("the display has the keyboard", [](const ProgramState& state) {
                return state.text("keyboard") == u"Tarnwick";
            });
        }
    }

    void inDisplay(const ProgramState& now) {
        static constexpr void (Actions::*things[])(const ProgramState&) = {
            &Actions::rightClick,
            &Actions::rightClick,
            &Actions::pressEscape,
            &Actions::pressEscape,
            &Actions::pressReturn,
            &Actions::pressArrow,
            &Actions::pressArrow,
            &Actions::drag,
            &Actions::drag,
            &Actions::drag,
            &Actions::hover,
            &Actions::pressTab,
            &Actions::pressF11,
            &Actions::minimise,
            &Actions::hide,
            &Actions::openPreferences,
            &Actions::menuByKey,
            &Actions::minimiseAndClose,
            &Actions::minimiseAndClose,
        };
        (this->*things[pick(0, int(std::size(things)) - 1)])(now);
    }

    /// A key that changes nothing of what is looked at.
    void pressHere(const QString& name, Key key, const ProgramState& now) {
        note(name);
        person().press(key);
        m_observer.expectUnchanged(name, now);
    }

    void rightClick(const ProgramState& now) {
        const QPoint place = somewhere(now.place());
        note(QString("right click at %1, %2").arg(place.x()).arg(place.y()));
        person().click(place, XCB_BUTTON_INDEX_3);
        if (now.number("preferences") == 0 && now.popups() == 0 && !now.is("hasPicker"))
            m_observer.expect("the menu opens", [](const ProgramState& state) { return state.popups() > 0; });
        else
            m_observer.look();
    }

    void menuByKey(const ProgramState& now) {
        if (now.is("hasPicker"))
            return;
        note("the menu key");
        person().press(Menu);
        m_observer.expect("the menu opens", [](const ProgramState& state) { return state.popups() > 0; });
    }

    void pressEscape(const ProgramState& now) {
        note("Escape");
        person().press(Escape);
        expectEscaped(now);
    }

    void expectEscaped(const ProgramState& now) {
        m_observer.expect("Escape does one thing", [&](const ProgramState& state) {
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
            m_observer.expectSkips(1);
        person().press(Return);
        if (now.popups() > 0)
            m_observer.waitForSkips();
        else
            expectTurned(now);
    }

    void pressArrow(const ProgramState& now) {
        static constexpr std::pair<Key, const char*> arrows[] = {
            {Left, "Left"}, {Right, "Right"}, {Up, "Up"}, {Down, "Down"}};
        const auto& [key, name] = arrows[pick(0, 3)];
        note(name);
        if ((key == Left || key == Right) && now.popups() == 0)
            m_observer.expectSkips(1);
        person().press(key);
        m_observer.waitForSkips();
        m_observer.expectUnchanged(name, now);
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
        person().moveTo(from);
        const bool isFree = now.number("preferences") == 0 && now.popups() == 0 && !now.is("isFullScreen") &&
                            !m_observer.look().is("hasBar");
        person().drag(from, way);
        if (isFree)
            m_observer.expect("the window goes with the pointer", [&](const ProgramState& state) {
                const QPoint gone = state.place().topLeft() - now.place().topLeft();
                return gone.x() * way.x() > 0 && gone.y() * way.y() > 0;
            });
        m_observer.expectUnchanged("a drag", now);
    }

    void hover(const ProgramState& now) {
        const QPoint place =
            pick(0, 2) == 0 ? now.place().topLeft() + QPoint(40, 30) : somewhere(now.place());
        note(QString("hover at %1, %2").arg(place.x()).arg(place.y()));
        person().moveTo(place);
        m_observer.expectUnchanged("hovering", now);
    }

    void pressTab(const ProgramState& now) {
        const int times = pick(1, 7);
        note(QString("Tab %1 times").arg(times));
        for (int i = 0; i < times; ++i)
            person().press(Tab);
        m_observer.expectUnchanged("Tab", now);
    }

    void pressF11(const ProgramState& now) {
        note("F11");
        person().press(F11);
        expectToggledFullScreen(now);
    }

    void expectToggledFullScreen(const ProgramState& before) {
        m_observer.expect("F11 toggles full screen",
                          [was = before.is("isFullScreen")](const ProgramState& state) {
                              return state.is("isFullScreen") != was;
                          });
    }

    void minimise(const ProgramState& now) {
        note("minimise by the taskbar");
        person().minimise(now.window());
        expectMinimised();
    }

    void minimiseAndClose(const ProgramState& now) {
        if (!now.hasKeys() || now.number("preferences") > 0) // which may lie over the button
            return;
        note("minimise by the button, restore by the taskbar, close");
        const QPoint corner = now.place().topLeft();
        // In full screen the buttons stand as far from each other as fingers need it.
        const QPoint button = corner + QPoint(now.is("isFullScreen") ? 83 : 50, 26);
        person().moveTo(corner + QPoint(100, 45));
        person().moveTo(button);
        m_observer.expect("the buttons are shown",
                          [](const ProgramState& state) { return state.is("hasButtons"); });
        person().click(button, XCB_BUTTON_INDEX_1);
        expectMinimised();
        person().activate(now.window());
        expectShown();
        person().press(LetterW, true);
        expectHidden();
    }

    /// Also that the program knows from the desktop: restored before that, it would never learn of either.
    void expectMinimised() {
        m_observer.expect("it is minimised", [](const ProgramState& state) {
            return state.is("isMinimised") && !state.is("isExposed") && state.text("keyboard") != u"Tarnwick";
        });
    }

    void expectShown() {
        m_observer.expect("it is shown and has the keyboard", [](const ProgramState& state) {
            return state.isThere() && state.text("keyboard") == u"Tarnwick";
        });
    }

    void hide(const ProgramState&) {
        note("close the window");
        person().press(LetterW, true);
        expectHidden();
    }

    void expectHidden() {
        m_observer.expect("it is hidden", [](const ProgramState& state) { return !state.is("isVisible"); });
    }

    void openPreferences(const ProgramState&) {
        note("open the preferences");
        person().press(Comma, true);
        m_observer.expect("the preferences have the keyboard and fit on the screen",
                          [](const ProgramState& state) {
                              return state.number("preferences") == 1 &&
                                     state.text("keyboard") == u"Preferences" && state.is("preferencesFit");
                          });
    }

    Observer& m_observer;
    std::mt19937 m_chance;
    QStringList m_done;
};

} // namespace tarnwick
