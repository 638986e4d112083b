#include "app/Commands.h"
#include "app/DesktopApplication.h"
#include "app/DisplayProgram.h"
#include "app/Identity.h"
#include "app/Memory.h"
#include "platform/musicapp/mpris/MprisMusic.h"

#include <QGuiApplication>

namespace tarnwick {

int runDisplay(const Invocation& invocation) {
    giveFreedPicturesBack();
    QGuiApplication::setDesktopFileName(bundleIdentifier());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return DisplayProgram(invocation).run();
}

int runShow() {
    if (!musicapp::MprisMusic::hasSessionBus())
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
