#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tarnwick::players {

/// The pictures on this machine that may be a track's cover, without repetitions: the one that `artUrl` names
/// by `file:` or `data:`, the one inside the file at `path`, and those beside it called cover, folder or
/// front. Reads the disk, so only in the background.
std::vector<QByteArray> findLocalPictures(const QString& artUrl, const QString& path);

/// Width times height that the header tells; 0 when it is no picture.
qint64 pixelsOf(const QByteArray& picture);

/// The largest picture first; equally large ones keep their order.
void sortBySize(std::vector<QByteArray>& pictures);

} // namespace tarnwick::players
