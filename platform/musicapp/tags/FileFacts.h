#pragma once

#include "platform/musicapp/Track.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwick::musicapp {

/// What a music file says about itself: everything of `Track` but `id`. Reads the disk, so not on the
/// main thread. None when it is no regular file. A file that is no music has a path and a size, and
/// perhaps a kind.
std::optional<Track> readFileFacts(const QString& path);

/// The picture inside a music file, the front cover if it says which that is; empty when there is none, or
/// only one larger than `limit` bytes. Reads the disk.
QByteArray readEmbeddedPicture(const QString& path, qsizetype limit);

/// Whether the name looks like that of a music file.
bool isMusicFileName(const QString& name);

} // namespace tarnwick::musicapp
