#include "players/tags/TagCache.h"

#include "players/FileName.h"
#include "players/tags/FileFacts.h"

#include <sys/stat.h>

namespace tarnwick::players {

namespace {

// Enough for the albums of a long evening; beyond it one begins anew.
constexpr qsizetype maximumEntries = 20000;

} // namespace

std::shared_ptr<const Track> TagCache::read(const QString& path) {
    struct stat status {};
    if (::stat(bytesOfName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    const qint64 changed = qint64{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
    {
        const std::lock_guard lock(m_mutex);
        const auto known = m_entries.constFind(path);
        if (known != m_entries.constEnd() && known->size == status.st_size && known->changed == changed)
            return known->facts;
    }
    ++m_readCount;
    auto facts = std::make_shared<const Track>(readFileFacts(path, status.st_size));
    const std::lock_guard lock(m_mutex);
    if (m_entries.size() >= maximumEntries)
        m_entries.clear();
    m_entries.insert(path, {status.st_size, changed, facts});
    return facts;
}

} // namespace tarnwick::players
