#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// One disc of the current album.
struct DiscTrack {
    qint64 discNumber = 1; ///< as Music reports it; 1 for the single group made of a text reply
    QStringList tracks;    ///< titles, by ascending track number

    bool operator==(const DiscTrack&) const = default;
};

} // namespace tarnwick
