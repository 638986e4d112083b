#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/desktop/DesktopApplication.h"
#include "app/desktop/Identity.h"
#include "app/desktop/Leave.h"
#include "app/desktop/Memory.h"
#include "app/program/DisplayProgram.h"
#include "players/mpris/MprisMusic.h"

#include <QGuiApplication>

namespace tarnwick {

using namespace std::chrono_literals;

int runDisplay(const Invocation& invocation) {
    giveFreedPicturesBack();
    QGuiApplication::setDesktopFileName(bundleIdentifier());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    DisplayProgram program(invocation);
    const int code = program.run();
    leaveWithin(1s, code);
    return code;
}

int runShow() {
    if (!players::MprisMusic::hasSessionBus())
        return nobodyRuns;
    const auto bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("tarnwick-show"));
    switch (DesktopApplication::askToShow(bus)) {
    case DesktopApplication::Answer::Shown:
        return exitDone;
    case DesktopApplication::Answer::NoAnswer:
        complain(QStringLiteral("the display that runs does not answer"));
        return exitFailed;
    case DesktopApplication::Answer::NobodyRuns:
        break;
    }
    return nobodyRuns;
}

} // namespace tarnwick
