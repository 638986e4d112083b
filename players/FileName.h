#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tarnwick::players {

// File names are bytes, and old ones are no UTF-8. As a text such a byte is a half of a surrogate pair
// (U+DC80 to U+DCFF), which no valid name contains, so that the text leads back to the file.

/// The name or path as a text.
QString nameFromBytes(const QByteArray& bytes);

/// What the system calls the file whose name or path is `name`.
QByteArray bytesOfName(const QString& name);

/// The same to be read: what is no text is U+FFFD.
QString readableName(const QString& name);

/// The names of the regular files in a folder that are not hidden, in order. Touches the disk; `QDir` asks it
/// several times for each.
QStringList filesIn(const QString& folder);

} // namespace tarnwick::players
