#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/program/MusicSession.h"
#include "script/values/Printer.h"

#include <QFile>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

/// A script is a page of text; a file beyond this is something else.
constexpr qint64 maximumScriptBytes = qint64{16} * 1024 * 1024;

/// Until the end or past the limit: a pipe gives with each reading what happens to be in it.
QByteArray readBytes(QFile& file) {
    QByteArray bytes;
    while (bytes.size() <= maximumScriptBytes) {
        const QByteArray more = file.read(maximumScriptBytes + 1 - bytes.size());
        if (more.isEmpty())
            break;
        bytes += more;
    }
    return bytes;
}

std::variant<QString, QString> readScript(const QString& name) {
    QFile file(name);
    const bool opened =
        name == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!opened)
        return std::variant<QString, QString>(std::in_place_index<1>,
                                              QStringLiteral("%1: %2").arg(name, file.errorString()));
    const QByteArray bytes = readBytes(file);
    if (file.error() != QFileDevice::NoError)
        return std::variant<QString, QString>(std::in_place_index<1>,
                                              QStringLiteral("%1: %2").arg(name, file.errorString()));
    if (bytes.size() > maximumScriptBytes)
        return std::variant<QString, QString>(
            std::in_place_index<1>,
            QStringLiteral("%1: too large for a script, which has 16 MiB at most").arg(name));
    auto decoded = script::decodeSource(bytes);
    if (const auto* error = std::get_if<script::Error>(&decoded))
        return std::variant<QString, QString>(std::in_place_index<1>,
                                              QStringLiteral("%1:%2").arg(name, error->toStringWithPlace()));
    return std::variant<QString, QString>(std::in_place_index<0>, std::get<QString>(decoded));
}

} // namespace

int runScript(const Invocation& invocation) {
    const QString& file = invocation.arguments.front();
    script::Limits limits;
    if (const auto limit = invocation.option(QStringLiteral("limit"))) {
        bool isNumber = false;
        const double seconds = limit->toDouble(&isNumber);
        if (!isNumber || !(seconds > 0 && seconds <= 1e6)) {
            complain(QStringLiteral("--limit is a number of seconds above 0, not '%1'").arg(*limit));
            return exitUsage;
        }
        limits.runTime =
            std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(seconds));
    }
    const auto source = readScript(file);
    if (source.index() == 1) {
        complain(std::get<1>(source));
        return exitFailed;
    }
    std::atomic<bool> dialogShown = false;
    MusicSession session(invocation, {.log = complain,
                                      .showDialog =
                                          [&](const QString& text) {
                                              dialogShown = true;
                                              complain(text);
                                          },
                                      .demoStartsStopped = true,
                                      .isCommand = true});
    script::Outcome outcome;
    std::optional<QString> refusal;
    session.runInBackground([&] {
        session.music().waitUntilComplete(completionTime);
        outcome = session.execute(std::get<0>(source), limits);
        refusal = session.music().finishCommands(1s);
    });
    if (const QString missing = missingPlayer(invocation, session.music()); !missing.isEmpty()) {
        complain(missing);
        return exitFailed;
    }
    if (outcome.error) {
        complain(QStringLiteral("%1:%2").arg(file, outcome.error->toStringWithPlace()));
        return exitFailed;
    }
    if (invocation.has(QStringLiteral("json")))
        print(QString::fromUtf8(script::json(*outcome.reply)) + QLatin1Char('\n'));
    else if (const QString text = script::literal(*outcome.reply); !text.isEmpty())
        print(printable(text) + QLatin1Char('\n'));
    if (refusal)
        complain(*refusal);
    return refusal || dialogShown ? exitFailed : exitDone;
}

} // namespace tarnwick
