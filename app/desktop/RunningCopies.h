#pragma once

#include <QString>

#include <cstdint>

namespace tarnwick {

/// This copy of the program among those that run. Each holds a lock on one byte of a file that they share,
/// the later one on a higher byte; the kernel takes the lock back however a copy ends.
class RunningCopies {
public:
    /// Where the copies of this user's session meet.
    static QString standardFolder();

    /// Enters this copy in `folder`. Where that is not possible, this copy is the only one it knows of.
    explicit RunningCopies(const QString& folder);
    RunningCopies(const RunningCopies&) = delete;
    RunningCopies& operator=(const RunningCopies&) = delete;
    ~RunningCopies();

    /// Whether no copy runs that was entered before this one. Of any number of copies, exactly one is the
    /// first.
    bool isFirst() const;

private:
    void enter();

    int m_descriptor = -1;
    std::int64_t m_place = 0; ///< the byte that is held; 0 when the copy could not be entered
};

} // namespace tarnwick
