#pragma once

#include "players/Track.h"

#include <QHash>
#include <QString>

#include <atomic>
#include <memory>
#include <mutex>

namespace tarnwick::players {

/// What files say about themselves, read once: a file is read again when its size or its time of change is
/// another. Any thread may ask, but not the main thread, because the disk is asked.
class TagCache {
public:
    /// The facts of the file; null when it is no regular file.
    std::shared_ptr<const Track> read(const QString& path);

    /// How many files were opened so far; for measurements and tests.
    int readCount() const { return m_readCount; }

private:
    struct Entry {
        qint64 size = 0;
        qint64 changed = 0; ///< nanoseconds since 1970
        std::shared_ptr<const Track> facts;
    };

    std::mutex m_mutex;
    QHash<QString, Entry> m_entries;
    std::atomic<int> m_readCount = 0;
};

} // namespace tarnwick::players
