#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/program/MusicSession.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>

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
                               .demoStartsStopped = true}) {}

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

void playPause(Attempt& attempt, const QString&) {
    attempt.session.await({[&](Done done) { attempt.session.source().playPause(done); }});
}

void next(Attempt& attempt, const QString&) { attempt.session.source().nextTrack(); }

void previous(Attempt& attempt, const QString&) { attempt.session.source().previousTrack(); }

void shuffle(Attempt& attempt, const QString&) { attempt.session.source().toggleShuffle(); }

void volume(Attempt& attempt, const QString& level) { attempt.session.source().setVolume(level.toDouble()); }

void title(Attempt& attempt, const QString& name) {
    MusicSource& source = attempt.session.source();
    // The title is looked for on the album that plays, and a fresh model knows none.
    attempt.session.runInBackground([&] { attempt.session.music().waitUntilComplete(completionTime); });
    attempt.session.await({[&](Done done) { source.fetchNowPlaying(done); }});
    source.playTrack(name);
}

void playlist(Attempt& attempt, const QString& name) {
    const QString wanted = name.trimmed();
    const QStringList names = playlistNames(attempt);
    if (std::none_of(names.begin(), names.end(), [&](const QString& candidate) {
            return candidate.compare(wanted, Qt::CaseInsensitive) == 0;
        }))
        attempt.fail(QStringLiteral("no playlist is called '%1'").arg(name));
    else
        attempt.session.source().playPlaylist(name);
}

struct Action {
    const char* name;
    bool takesArgument;
    void (*run)(Attempt&, const QString&);
};

constexpr std::array actions{
    Action{"play-pause", false, playPause}, Action{"next", false, next},
    Action{"previous", false, previous},    Action{"shuffle", false, shuffle},
    Action{"volume", true, volume},         Action{"title", true, title},
    Action{"playlist", true, playlist},
};

/// Why the command cannot be what was meant; empty when it can.
QString usageFault(const Invocation& invocation, const Action* action) {
    const QString& name = invocation.arguments.front();
    if (!action)
        return QStringLiteral("unknown command 'do %1'; tarnwick --help lists them").arg(name);
    if (invocation.has(QStringLiteral("json")))
        return QStringLiteral("--json does not go with do %1").arg(name);
    if (action->takesArgument != (invocation.arguments.size() == 2))
        return QStringLiteral("usage: tarnwick do %1%2")
            .arg(name, action->takesArgument ? QStringLiteral(" ARGUMENT") : QString());
    if (action->run == volume) {
        bool isNumber = false;
        const double level = invocation.arguments.at(1).toDouble(&isNumber);
        if (!isNumber || !(level >= 0 && level <= 1))
            return QStringLiteral("a volume is a number from 0 to 1, not '%1'")
                .arg(invocation.arguments.at(1));
    }
    return {};
}

int runPlaylists(const Invocation& invocation) {
    Attempt attempt(invocation);
    attempt.session.runInBackground([&] { attempt.session.music().waitUntilReady(readyTime); });
    const QStringList names = playlistNames(attempt);
    if (invocation.has(QStringLiteral("json")))
        print(QString::fromUtf8(
            QJsonDocument(QJsonArray::fromStringList(names)).toJson(QJsonDocument::Compact) + '\n'));
    else
        for (const QString& name : names)
            print(printable(name) + QLatin1Char('\n'));
    return exitDone;
}

} // namespace

int runDo(const Invocation& invocation) {
    const QString& name = invocation.arguments.front();
    if (name == QLatin1String("playlists") && invocation.arguments.size() == 1)
        return runPlaylists(invocation);
    const auto* action = std::find_if(actions.begin(), actions.end(),
                                      [&](const Action& entry) { return name == QLatin1String(entry.name); });
    if (const QString fault = usageFault(invocation, action == actions.end() ? nullptr : action);
        !fault.isEmpty()) {
        complain(fault);
        return exitUsage;
    }
    Attempt attempt(invocation);
    MusicSession& session = attempt.session;
    session.runInBackground([&] { session.music().waitUntilReady(readyTime); });
    if (session.music().playerName().isEmpty() && action->run != playPause) {
        attempt.fail(QStringLiteral("no player is running"));
        return exitFailed;
    }
    action->run(attempt, invocation.arguments.value(1));
    std::optional<QString> refusal;
    session.runInBackground([&] { refusal = session.music().finishCommands(answerTime); });
    if (refusal)
        attempt.fail(*refusal);
    return attempt.failed ? exitFailed : exitDone;
}

} // namespace tarnwick
