#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/program/MusicSession.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <cmath>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

constexpr auto readyTime = 1s;
constexpr auto answerTime = 1s;

/// A session of which every line that it logs means that the command failed.
struct Attempt {
    explicit Attempt(const Invocation& invocation)
        : session(invocation, {.log = [this](const QString& line) { fail(line); },
                               .showDialog = [this](const QString& text) { fail(text); },
                               .demoStartsStopped = true,
                               .isCommand = true}) {}

    /// The first reason is the one; what follows from it is not said.
    void fail(const QString& line) {
        if (!failed.exchange(true))
            complain(line);
    }

    std::atomic<bool> failed = false; // before the session, which may still log while it ends
    MusicSession session;
};

using Done = const dispatch::Task&;

/// A player may be known for a while before its playlists are.
QStringList playlistNames(Attempt& attempt) {
    attempt.session.runInBackground([&] { attempt.session.music().waitUntilComplete(answerTime); });
    return attempt.session.source().fetchPlaylists();
}

/// Runs `statement` in front of Music, for what the model has no command for.
void tell(Attempt& attempt, const QString& statement) {
    script::Outcome outcome;
    attempt.session.runInBackground([&] {
        outcome = attempt.session.execute(
            QStringLiteral("tell application \"Music\"\n    %1\nend tell").arg(statement));
    });
    if (outcome.error)
        attempt.fail(outcome.error->toString());
}

void playPause(Attempt& attempt, const QString&) {
    attempt.session.await({[&](Done done) { attempt.session.source().playPause(done); }});
}

void play(Attempt& attempt, const QString&) {
    tell(attempt, QStringLiteral("if not running then launch\n    if player state is not playing then play"));
}

void pause(Attempt& attempt, const QString&) {
    tell(attempt, QStringLiteral("if player state is playing then pause"));
}

void stop(Attempt& attempt, const QString&) { tell(attempt, QStringLiteral("stop")); }

void next(Attempt& attempt, const QString&) { attempt.session.source().nextTrack(); }

void previous(Attempt& attempt, const QString&) { attempt.session.source().previousTrack(); }

bool isRelative(const QString& number) { return number.startsWith(u'+') || number.startsWith(u'-'); }

void seek(Attempt& attempt, const QString& place) {
    const QString seconds = QString::number(place.toDouble(), 'f', 3);
    tell(attempt, isRelative(place)
                      ? QStringLiteral("set player position to player position + (%1)").arg(seconds)
                      : QStringLiteral("set player position to %1").arg(seconds));
}

void shuffle(Attempt& attempt, const QString& state) {
    if (state.isEmpty())
        attempt.session.source().toggleShuffle();
    else
        tell(attempt,
             QStringLiteral("set shuffle enabled to %1")
                 .arg(state == QLatin1String("on") ? QStringLiteral("true") : QStringLiteral("false")));
}

void volume(Attempt& attempt, const QString& level) {
    if (isRelative(level)) // past the ends it stays there
        tell(attempt,
             QStringLiteral("set sound volume to sound volume + (%1)").arg(qRound(level.toDouble() * 100)));
    else
        attempt.session.source().setVolume(level.toDouble());
}

void title(Attempt& attempt, const QString& name) {
    MusicSource& source = attempt.session.source();
    // The title is looked for on the album that plays, and a fresh model knows none.
    attempt.session.runInBackground([&] { attempt.session.music().waitUntilComplete(completionTime); });
    attempt.session.await({[&](Done done) { source.fetchNowPlaying(done); }});
    source.playTrack(name);
}

void playlist(Attempt& attempt, const QString& name) {
    playlistNames(attempt); // waits until they are there
    if (const auto failure = attempt.session.source().playPlaylist(name))
        attempt.fail(*failure);
}

/// Why `text` cannot be an argument; empty when it can.
using ArgumentFault = QString (*)(const QString& text);

QString anything(const QString&) { return {}; }

QString notAVolume(const QString& text) {
    bool isNumber = false;
    const double level = text.toDouble(&isNumber);
    return isNumber && std::abs(level) <= 1 && (isRelative(text) || level >= 0)
               ? QString()
               : QStringLiteral("a volume is a number from 0 to 1, or a step like +0.1 or -0.1, not '%1'")
                     .arg(text);
}

QString notAPlace(const QString& text) {
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    return isNumber && std::abs(seconds) <= 1e6
               ? QString()
               : QStringLiteral("a place is a number of seconds, or a step like +10 or -10, not '%1'")
                     .arg(text);
}

QString notOnOrOff(const QString& text) {
    return text == QLatin1String("on") || text == QLatin1String("off")
               ? QString()
               : QStringLiteral("shuffle is on or off, not '%1'").arg(text);
}

struct Action {
    const char* name;
    int leastArguments;
    int mostArguments;
    const char* argument; ///< as the usage names it
    void (*run)(Attempt&, const QString&);
    ArgumentFault fault = anything;
    bool startsPlayer = false; ///< when none runs
    std::chrono::seconds patience = answerTime;
};

// A title may have to be tried as a playlist before it is opened as a file.
constexpr std::array actions{
    Action{"play-pause", 0, 0, "", playPause, anything, true},
    Action{"play", 0, 0, "", play, anything, true},
    Action{"pause", 0, 0, "", pause},
    Action{"stop", 0, 0, "", stop},
    Action{"next", 0, 0, "", next},
    Action{"previous", 0, 0, "", previous},
    Action{"seek", 1, 1, " SECONDS|+SECONDS|-SECONDS", seek, notAPlace},
    Action{"shuffle", 0, 1, " [on|off]", shuffle, notOnOrOff},
    Action{"volume", 1, 1, " 0..1|+0.1|-0.1", volume, notAVolume},
    Action{"title", 1, 1, " TEXT", title, anything, false, 4s},
    Action{"playlist", 1, 1, " NAME", playlist},
    Action{"playlists", 0, 0, " [--json]", nullptr},
};

/// Why the command cannot be what was meant; empty when it can.
QString usageFault(const Invocation& invocation, const Action* action) {
    const QString& name = invocation.arguments.front();
    if (!action)
        return QStringLiteral("unknown command 'do %1'; tarnwick --help lists them").arg(name);
    if (invocation.has(QStringLiteral("json")) && action->run != nullptr)
        return QStringLiteral("--json does not go with do %1").arg(name);
    const auto given = invocation.arguments.size() - 1;
    if (given < action->leastArguments || given > action->mostArguments)
        return QStringLiteral("usage: tarnwick do %1%2").arg(name, QLatin1String(action->argument));
    return given == 1 ? action->fault(invocation.arguments.at(1)) : QString();
}

void printPlaylists(Attempt& attempt, bool asJson) {
    const QStringList names = playlistNames(attempt);
    if (asJson)
        print(QString::fromUtf8(
            QJsonDocument(QJsonArray::fromStringList(names)).toJson(QJsonDocument::Compact) + '\n'));
    else
        for (const QString& name : names)
            print(printable(name) + QLatin1Char('\n'));
}

} // namespace

int runDo(const Invocation& invocation) {
    const QString& name = invocation.arguments.front();
    const auto* action = std::find_if(actions.begin(), actions.end(),
                                      [&](const Action& entry) { return name == QLatin1String(entry.name); });
    if (const QString fault = usageFault(invocation, action == actions.end() ? nullptr : action);
        !fault.isEmpty()) {
        complain(fault);
        return exitUsage;
    }
    if (const QString remark = sourceRemark(invocation); !remark.isEmpty())
        complain(remark);
    Attempt attempt(invocation);
    MusicSession& session = attempt.session;
    session.runInBackground([&] { session.music().waitUntilReady(readyTime); });
    if (session.music().playerName().isEmpty() && !action->startsPlayer) {
        const QString missing = missingPlayer(invocation, session.music());
        attempt.fail(missing.isEmpty() ? QStringLiteral("no player is running") : missing);
        return exitFailed;
    }
    if (action->run == nullptr) {
        printPlaylists(attempt, invocation.has(QStringLiteral("json")));
        return attempt.failed ? exitFailed : exitDone;
    }
    action->run(attempt, invocation.arguments.value(1));
    std::optional<QString> refusal;
    session.runInBackground([&] { refusal = session.music().finishCommands(action->patience); });
    if (refusal)
        attempt.fail(*refusal);
    return attempt.failed ? exitFailed : exitDone;
}

} // namespace tarnwick
