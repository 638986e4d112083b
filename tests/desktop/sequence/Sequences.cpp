// Does what people do at the display in an order of chance, and looks after each thing that the display is as
// it must be. Usage: sequence_driver PROGRAM PROBE COUNT SEED; see `sequences`.

#include "tests/desktop/sequence/Actions.h"

#include <QCoreApplication>

#include <cstdio>

using namespace tarnwick;

namespace {

/// Sequences at one program, which each end as they have begun.
class Session {
public:
    Session(const QString& program, const QString& probe) : m_observer(program, probe) { goHome(); }

    /// Does some things, and then sees whether the display still obeys.
    void play(unsigned seed) {
        m_actions.begin(seed);
        const int length = m_actions.pick(2, 8);
        for (int i = 0; i < length; ++i)
            m_actions.doSomething();
        if (seed % 8 == 0) // it takes a second
            m_actions.holdSomething();
        finish();
    }

    const QStringList& done() const { return m_actions.done(); }

private:
    void finish() {
        if (!m_observer.look().isThere())
            m_actions.showAgain();
        closeEverything();
        ProgramState now = checkKeys();
        if (now.is("isFlipped")) {
            turn(now);
            now = m_observer.look();
        }
        turn(now);
        m_observer.person().press(Escape);
        now = m_observer.expect("Escape turns it back",
                                [fills = now.is("isFullScreen")](const ProgramState& state) {
                                    return !state.is("isFlipped") && state.is("isFullScreen") == fills;
                                });
        if (now.is("isFullScreen")) {
            m_observer.person().press(Escape);
            m_observer.expect("Escape leaves full screen",
                              [](const ProgramState& state) { return !state.is("isFullScreen"); });
        }
        m_observer.checkRest();
        goHome();
    }

    void turn(const ProgramState& now) {
        m_observer.person().press(Return);
        m_actions.expectTurned(now);
    }

    void closeEverything() {
        for (ProgramState now = m_observer.look(); now.number("preferences") > 0 || now.popups() > 0;
             now = m_observer.look()) {
            if (now.popups() > 0 && now.text("keyboard") == u"Tarnwick") {
                m_observer.person().press(Escape);
                m_observer.expect("Escape closes what is open",
                                  [&](const ProgramState& state) { return state.popups() < now.popups(); });
                continue;
            }
            if (now.text("keyboard") == u"Tarnwick") {
                m_observer.person().press(Comma, true);
                m_observer.expect("the preferences come to the front", [](const ProgramState& state) {
                    return state.text("keyboard") == u"Preferences";
                });
            }
            m_observer.person().press(LetterW, true);
            m_observer.expect("the preferences close", [&](const ProgramState& state) {
                return state.number("preferences") < now.number("preferences");
            });
        }
    }

    ProgramState checkKeys() {
        return m_observer.expect("the display has the keys",
                                 [](const ProgramState& state) { return state.hasKeys(); });
    }

    /// Where every sequence begins.
    void goHome() {
        for (int i = 0; m_observer.look().text("focus") == u"inside" && i < 10; ++i)
            m_observer.person().press(Tab);
        m_observer.person().moveTo(home.bottomRight() + QPoint(100, 100));
        m_observer.person().place(m_observer.look().window(), home);
        m_observer.expect("the display is where it began", [](const ProgramState& state) {
            return state.place() == home && state.hasKeys() && state.text("focus") == u"keys";
        });
    }

    Observer m_observer;
    Actions m_actions{m_observer};
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
