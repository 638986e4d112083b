#pragma once

#include "players/Track.h"

#include <QByteArray>
#include <QString>

namespace tarnwick::players {

/// What a music file of `size` bytes says about itself: everything of `Track` but `id`. It must be a regular
/// file, for which `TagCache` looks first. Reads the disk, so not on the main thread. A file that is no
/// music, or gone, has a path and a size, and perhaps a kind.
Track readFileFacts(const QString& path, qint64 size);

/// The picture inside a music file, the front cover if it says which that is; empty when there is none, or
/// only one larger than `limit` bytes. Reads the disk.
QByteArray readEmbeddedPicture(const QString& path, qsizetype limit);

/// Whether the name looks like that of a music file.
bool isMusicFileName(const QString& name);

} // namespace tarnwick::players
