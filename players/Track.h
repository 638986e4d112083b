#pragma once

#include <QString>

#include <optional>

namespace tarnwick::players {

/// The facts of one track. An empty text and a number of 0 mean that it has none, or that nobody knows it.
struct Track {
    QString name;
    QString artist;
    QString album;
    QString genre;
    QString comment;
    QString grouping;
    QString kind; ///< the file's type in words, "FLAC audio file"
    QString path; ///< of the local file; empty for a stream
    QString id;   ///< what the source plays it by
    int year = 0;
    int trackNumber = 0;
    int discNumber = 0;
    int discCount = 0;
    bool compilation = false;
    double duration = 0; ///< seconds
    int bitRate = 0;     ///< kilobits per second
    int sampleRate = 0;  ///< hertz
    qint64 size = 0;     ///< bytes

    bool operator==(const Track&) const = default;
};

/// Whether the two say the same. What the source plays them by may be another at every look.
inline bool saysTheSame(const Track& a, Track b) {
    b.id = a.id;
    return a == b;
}

} // namespace tarnwick::players
