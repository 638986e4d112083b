#pragma once

#include <QString>

namespace tarnwick {

inline constexpr int exitDone = 0;
inline constexpr int exitFailed = 1;
inline constexpr int exitUsage = 2;

/// `text` as one line that a terminal shows and does not obey: a line end or a tab is a blank, any other
/// control character and what turns the direction of writing is written as its number, `\u001b`. For whatever
/// a player, a script or a file may have made up; JSON needs none of it.
QString printable(const QString& text);

/// One line on standard error, `printable()`.
void complain(const QString& line);

/// Standard output, as UTF-8. Whether it could be written.
bool print(const QString& text);

/// Why a picture cannot be written under this name, which says of what kind it is: pictures are PNG. Empty
/// when it can.
QString pictureNameFault(const QString& file);

} // namespace tarnwick
