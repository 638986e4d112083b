#pragma once

#include <chrono>

namespace tarnwick {

/// The process ends with `code` in `patience` at the latest, whatever still runs then: a file that is read
/// from a disk that does not answer holds up nobody who switches off. What is still being stored by
/// then is lost.
void leaveWithin(std::chrono::milliseconds patience, int code);

} // namespace tarnwick
