#include "app/Commands.h"
#include "app/DesktopApplication.h"
#include "app/DisplayProgram.h"
#include "app/Identity.h"
#include "platform/musicapp/mpris/MprisMusic.h"

#include <QGuiApplication>
#include <malloc.h>

namespace tarnwick {

namespace {

/// glibc would learn from the first picture that is freed to keep all later ones of its size in its own heap,
/// where they leave holes: half of the program's memory after a few albums.
void giveFreedPicturesBack() {
#ifdef M_MMAP_THRESHOLD
    constexpr int smallestPicture = 256 * 1024; // bytes
    mallopt(M_MMAP_THRESHOLD, smallestPicture);
#endif
}

} // namespace

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
