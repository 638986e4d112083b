#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

#include <optional>

/// Files that players name. These functions touch the disk, so not on the main thread.
namespace tarnwick::players {

/// The absolute path of the regular file that `url` means: a `file:` URL, or one with the raw path behind
/// it, or a bare path. Empty when there is no such file.
QString localPathOf(const QString& url);

/// The days on which the file was changed, written or moved, and made, here; empty when there is no such
/// file.
QList<QDate> datesOfFile(const QString& path);

/// The bytes of a regular file of at most `limit` bytes; none for anything else. Never waits for a pipe or
/// a device.
std::optional<QByteArray> readRegularFile(const QString& path, qint64 limit);

/// The bytes in a `data:` URL, at most `limit`; none when it is none.
std::optional<QByteArray> bytesOfDataUrl(const QString& url, qint64 limit);

} // namespace tarnwick::players
