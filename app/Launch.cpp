#include "app/Launch.h"

#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/desktop/ScreenProbe.h"
#include "app/program/MusicSession.h"
#include "platform/fonts/FontRegistry.h"
#include "players/mpris/MprisMusic.h"

#include <QDBusConnection>
#include <QFont>
#include <QGuiApplication>
#include <unistd.h>

#include <array>
#include <memory>

namespace tarnwick {

namespace {

struct CommandEntry {
    const char* name;
    int (*run)(const Invocation&);
    enum { Core, Offscreen, Screen } needs;
};

constexpr std::array commands{
    CommandEntry{"display", runDisplay, CommandEntry::Screen},
    CommandEntry{"status", runStatus, CommandEntry::Core},
    CommandEntry{"do", runDo, CommandEntry::Core},
    CommandEntry{"script", runScript, CommandEntry::Core},
    CommandEntry{"defaults", runDefaults, CommandEntry::Core},
    CommandEntry{"palette", runPalette, CommandEntry::Core},
    CommandEntry{"record", runRecord, CommandEntry::Core},
    CommandEntry{"snapshot", runSnapshot, CommandEntry::Offscreen},
};

QtMessageHandler qtMessages = nullptr;

/// Where Qt can't go on, as on a screen that it can't open, it would abort. Preferences are on disk by then.
void endOnFatal(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        complain(message.trimmed().section(u'\n', 0, 0));
        _exit(exitFailed);
    }
    qtMessages(type, context, message);
}

/// Where there is no session bus, Qt's own use of one would start a bus that outlives the program. The
/// library below reads the address once: it gets one that leads nowhere, and our own environment stays as it
/// is.
class NoBusOfItsOwn {
public:
    NoBusOfItsOwn() : m_isNeeded(!players::MprisMusic::hasSessionBus()) {
        if (m_isNeeded)
            qputenv(variable, "unix:path=/dev/null");
    }
    NoBusOfItsOwn(const NoBusOfItsOwn&) = delete;
    NoBusOfItsOwn& operator=(const NoBusOfItsOwn&) = delete;
    ~NoBusOfItsOwn() {
        if (!m_isNeeded)
            return;
        QDBusConnection::sessionBus();
        qunsetenv(variable);
    }

private:
    static constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
    const bool m_isNeeded;
};

std::unique_ptr<QCoreApplication> makeApplication(const CommandEntry& command, const Invocation& invocation,
                                                  int& argc, char** argv) {
    const bool needsScreen = command.needs == CommandEntry::Screen;
    // The demo paints its covers with fonts, which needs more than the plain application object.
    if (needsScreen || command.needs == CommandEntry::Offscreen || wantsDemo(invocation)) {
        if (!needsScreen)
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const NoBusOfItsOwn noBus;
        auto application = std::make_unique<QGuiApplication>(argc, argv);
        QGuiApplication::setFont(QFont(fonts::systemFontFamily()));
        return application;
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

} // namespace

int launch(int argc, char** argv) {
    qtMessages = qInstallMessageHandler(endOnFatal);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto parsed = parseCommandLine(arguments);
    if (const auto* error = std::get_if<UsageError>(&parsed)) {
        complain(error->message);
        return exitUsage;
    }
    const auto& invocation = std::get<Invocation>(parsed);
    if (invocation.has(QStringLiteral("help"))) {
        print(helpText());
        return exitDone;
    }
    if (invocation.has(QStringLiteral("version"))) {
        print(QStringLiteral("tarnwick " TARNWICK_VERSION "\n"));
        return exitDone;
    }
    for (const CommandEntry& command : commands) {
        if (invocation.command != QLatin1String(command.name))
            continue;
        if (invocation.has(QStringLiteral("show")))
            if (const int code = runShow(); code != nobodyRuns)
                return code;
        if (command.needs == CommandEntry::Screen)
            if (const QString fault = screenFault(); !fault.isEmpty()) {
                complain(fault);
                return exitFailed;
            }
        int qtArgc = 1; // Qt's own options are none of ours
        const auto application = makeApplication(command, invocation, qtArgc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("tarnwick"));
        QCoreApplication::setApplicationVersion(QStringLiteral(TARNWICK_VERSION));
        return command.run(invocation);
    }
    complain(QStringLiteral("%1 is not built into this program").arg(invocation.command));
    return exitFailed;
}

} // namespace tarnwick
