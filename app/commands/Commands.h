#pragma once

#include "app/commandline/CommandLine.h"

namespace tarnwick {

inline constexpr int nobodyRuns = -1; ///< no exit code: the display is opened instead

// Each runs one command to its end and returns the exit code. There is a QCoreApplication, or a
// QGuiApplication where the command says that it paints.

int runDisplay(const Invocation& invocation);

/// Asks the display that runs to come to the front; `nobodyRuns` when there is none. Needs no application
/// object.
int runShow();

int runStatus(const Invocation& invocation);
int runDo(const Invocation& invocation);
int runScript(const Invocation& invocation);
int runSnapshot(const Invocation& invocation);
int runDefaults(const Invocation& invocation);
int runPalette(const Invocation& invocation);
int runRecord(const Invocation& invocation);

} // namespace tarnwick
