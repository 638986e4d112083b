#pragma once

#include <QString>

namespace tarnwick {

/// This copy of the program among those that run. A copy is a locked file, so one that has crashed is
/// none any more.
class RunningCopies {
public:
    /// Where the copies of this user's session lie.
    static QString standardFolder();

    /// Enters this copy in `folder`. Where that is not possible, this copy is the only one it knows of.
    explicit RunningCopies(QString folder);
    RunningCopies(const RunningCopies&) = delete;
    RunningCopies& operator=(const RunningCopies&) = delete;
    ~RunningCopies();

    /// How many run now, this one included.
    int count() const;

private:
    const QString m_folder;
    QString m_file; ///< empty when the copy could not be entered
    int m_descriptor = -1;
};

} // namespace tarnwick
