#pragma once

#include <QString>

namespace tarnwick {

inline constexpr int exitDone = 0;
inline constexpr int exitFailed = 1;
inline constexpr int exitUsage = 2;

/// One line on standard error; a line break inside becomes a blank.
void complain(const QString& line);

/// Standard output, as UTF-8.
void print(const QString& text);

} // namespace tarnwick
