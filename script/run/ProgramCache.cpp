#include "script/run/ProgramCache.h"

namespace tarnwick::script {

ProgramPointer ProgramCache::find(const QString& source) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_bySource.constFind(source);
    if (found == m_bySource.constEnd())
        return {};
    m_entries.splice(m_entries.begin(), m_entries, *found);
    return m_entries.front().second;
}

void ProgramCache::insert(const QString& source, const ProgramPointer& program) {
    const std::lock_guard lock(m_mutex);
    if (m_bySource.contains(source))
        return;
    m_entries.emplace_front(source, program);
    m_bySource.insert(source, m_entries.begin());
    m_units += source.size();
    while (m_entries.size() > MaximumPrograms || (m_units > MaximumUnits && !m_entries.empty())) {
        const Entry& oldest = m_entries.back();
        m_units -= oldest.first.size();
        m_bySource.remove(oldest.first);
        m_entries.pop_back();
    }
}

} // namespace tarnwick::script
