#pragma once

namespace tarnwick {

/// The program: reads the command line, does what it asks, and returns the exit code: 0 done, 1 failed,
/// 2 bad usage.
int launch(int argc, char** argv);

} // namespace tarnwick
