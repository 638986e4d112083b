#pragma once

#include "tests/fakes/FakePlayer.h"

#include <QJsonObject>
#include <QProcess>
#include <QRect>
#include <QTemporaryDir>

#include <functional>

namespace tarnwick {

/// What the program says of itself; see Probe.cpp.
struct ProgramState {
    QJsonObject all;

    bool is(const char* name) const { return all.value(QLatin1String(name)).toBool(); }
    QString text(const char* name) const { return all.value(QLatin1String(name)).toString(); }
    int number(const char* name) const { return all.value(QLatin1String(name)).toInt(); }
    quint32 window() const { return quint32(all.value("window").toInteger()); }
    QRect place() const { return {number("x"), number("y"), number("width"), number("height")}; }

    bool isThere() const { return is("isVisible") && !is("isMinimised"); }
    /// The keys belong to what is in the window, and nothing is open over it.
    bool hasKeys() const {
        return text("keyboard") == u"Tarnwick" && popups() == 0 && !is("hasPicker") &&
               (text("focus") == u"keys" || text("focus") == u"inside");
    }
    int popups() const { return int(text("popups").split(' ', Qt::SkipEmptyParts).size()); }
};

/// The program as it runs, with a player, and with a probe in it that tells its state.
class ProbedProgram {
public:
    /// Starts `program` and returns when its display is there. What it says goes to its log.
    ProbedProgram(const QString& program, const QString& probe);
    ProbedProgram(const ProbedProgram&) = delete;
    ProbedProgram& operator=(const ProbedProgram&) = delete;
    ~ProbedProgram();

    /// The state after everything that the X server has sent so far. Empty when the program has gone.
    ProgramState state();

    /// Comes to the front when it is asked on the bus, as by a launcher.
    void show();

    /// What it has said since it was asked last, but for what it says of scripts.
    QString takeLog();

    /// How often the player was told to go on or back.
    int skips() const;

private:
    QTemporaryDir m_folder;
    FakePlayer m_player;
    QProcess m_process;
    QString m_logPath;
    qint64 m_logRead = 0;
    int m_connection = -1;
};

} // namespace tarnwick
