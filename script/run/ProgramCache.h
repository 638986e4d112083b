#pragma once

#include "script/run/Interpreter.h"

#include <QHash>
#include <QString>

#include <list>
#include <mutex>
#include <utility>

namespace tarnwick::script {

/// The programs of the texts compiled last, by content. Safe to use from several threads.
class ProgramCache {
public:
    /// Null when the text is not there.
    ProgramPointer find(const QString& source);
    /// Forgets what has not been asked for the longest when there are too many, or too long ones.
    void insert(const QString& source, const ProgramPointer& program);

private:
    using Entry = std::pair<QString, ProgramPointer>;

    static constexpr std::size_t MaximumPrograms = 64;
    static constexpr qsizetype MaximumUnits = 1'000'000;

    std::mutex m_mutex;
    std::list<Entry> m_entries; // the last asked for stands first
    QHash<QString, std::list<Entry>::iterator> m_bySource;
    qsizetype m_units = 0;
};

} // namespace tarnwick::script
