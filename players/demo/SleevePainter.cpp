#include "players/demo/SleevePainter.h"

#include <utility>

namespace tarnwick::players {

QByteArray SleevePainter::sleeve(DemoCover cover) {
    std::unique_lock lock(m_mutex);
    const auto [entry, isFirst] = m_sleeves.try_emplace(cover);
    std::optional<QByteArray>& sleeve = entry->second; // stays where it is, whatever else is inserted
    if (isFirst) {
        lock.unlock();
        QByteArray bytes = paintCover(cover);
        lock.lock();
        sleeve = std::move(bytes);
        m_isPainted.notify_all();
    } else {
        m_isPainted.wait(lock, [&] { return sleeve.has_value(); });
    }
    return *sleeve;
}

bool SleevePainter::isBegun(DemoCover cover) const {
    const std::lock_guard lock(m_mutex);
    return m_sleeves.contains(cover);
}

} // namespace tarnwick::players
