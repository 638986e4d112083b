#pragma once

#include "tests/desktop/sequence/Person.h"
#include "tests/desktop/sequence/ProbedProgram.h"

#include <QElapsedTimer>
#include <QJsonDocument>

#include <functional>
#include <stdexcept>
#include <thread>

namespace tarnwick {

/// Something is not as it must be; what, and what was seen instead.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One person at one program, who knows what must hold.
class Observer {
public:
    using Condition = std::function<bool(const ProgramState&)>;

    /// What is not so by then will not be; ms.
    static constexpr qint64 patience = 10'000;

    Observer(const QString& program, const QString& probe) : m_program(program, probe) {
        if (!look().is("isReady"))
            throw Fault("the program does not start:\n" + m_program.takeLog().toStdString());
    }

    Person& person() { return m_person; }
    ProbedProgram& program() { return m_program; }

    /// The state when the server, the window manager and the program have done all that was asked of them.
    ProgramState look() {
        m_person.catchUp();
        m_program.state();
        m_person.catchUp(); // what the program has asked of it meanwhile
        return m_program.state();
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
            std::this_thread::sleep_for(std::chrono::milliseconds(4));
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

    void expectUnchanged(const QString& name, const ProgramState& before) {
        expect(name + " changes nothing", [&](const ProgramState& state) {
            for (const char* what : {"isVisible", "isMinimised", "isFullScreen", "isFlipped", "preferences"})
                if (state.all.value(QLatin1String(what)) != before.all.value(QLatin1String(what)))
                    return false;
            return true;
        });
    }

    /// The player must have been told to skip `more` times more at the next moment of rest.
    void expectSkips(int more) { m_skips += more; }
    void waitForSkips() {
        expect("the player is told", [this](const ProgramState&) { return m_program.skips() >= m_skips; });
    }

private:
    Person m_person;
    ProbedProgram m_program;
    int m_skips = 0;
};

} // namespace tarnwick
