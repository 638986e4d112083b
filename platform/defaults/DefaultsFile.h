#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QJsonObject>
#include <QString>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace tarnwick::defaults {

/// Takes one line about something that went wrong.
using Report = std::function<void(const QString& line)>;

/// Blocks its caller for that long.
using Pause = std::function<void(dispatch::Duration)>;

/// The file behind `FileDefaults`: a JSON object. It is only ever replaced as a whole, under a lock
/// that lies beside it, so it can be read at any moment, and changes of several processes add up.
///
/// Editors are not as careful: they rename, truncate and fill in steps. A file that is gone or cannot be
/// read may come back whole, so it is only believed once nothing has happened to it for `quietTime`.
/// Even then what was in it last is kept in memory, and the next write begins from there.
///
/// The lock is the kernel's own (`flock`) and not a QLockFile, because it ends with its holder however
/// that ends; a QLockFile whose owner is killed between creating and filling it locks everybody out
/// until it has grown old. Any thread may use it.
class DefaultsFile {
public:
    /// How long a writer may do nothing before it counts as done.
    static constexpr dispatch::Duration quietTime = std::chrono::milliseconds(150);

    /// `report` gets a line when the file cannot be written, the first time in a row, when it cannot be
    /// read, and when it had to be set aside. It and `pause` are called on the thread of the operation.
    DefaultsFile(QString path, Report report, Pause pause);

    /// What the file holds, with the changes that are not written yet. A file that is gone, cannot be
    /// read or is no JSON object stays as it is, and holds what it held when it was last read or written.
    /// `isQuiet` tells that nothing has happened to it for `quietTime`; otherwise that is found out.
    QJsonObject load(bool isQuiet = false);

    /// Removes what processes that were killed while writing have left behind.
    void tidy();

    /// Notes `value` for the next `write`.
    void change(const QString& key, const QJsonValue& value);

    /// Writes what was noted into the file; one that is gone is made anew with all that it held, one that
    /// cannot be read is moved to a free name beside it before. Whether it could; if not, it stays noted.
    bool write();

    /// Replaces the value under `key` by what `change` makes of it, with nobody writing in between, and
    /// writes what was noted too. A value that is not there is undefined, and stays so when `change` says
    /// so. The new value; none when the file could not be written.
    std::optional<QJsonValue> update(const QString& key,
                                     const std::function<QJsonValue(const QJsonValue& now)>& change);

    const QString& path() const { return m_path; }

private:
    class Lock;
    class Mark;

    /// What reading gave: values, or the error; neither when there is no file.
    struct Content {
        std::optional<QJsonObject> values;
        QString error;
    };

    Content read() const;
    Content readWhole(bool* isWhole);
    bool isBelieved(const Content& content, const Mark& mark);
    QString lockPath() const;
    QJsonObject unwritten();
    bool write(const std::function<void(QJsonObject& content)>& amend);
    QString replace(const std::function<void(QJsonObject& content)>& amend);
    QString setAside(const QString& reason);

    const QString m_path;
    const Report m_report;
    const Pause m_pause;
    std::mutex m_writing; ///< held while the file is replaced
    bool m_failing = false;
    std::mutex m_mutex; ///< held for moments
    QJsonObject m_changes;
    QJsonObject m_last; ///< what the file held when it was last read or written
    std::shared_ptr<const Mark>
        m_lost; ///< the file that is gone or unreadable for good, as far as it is known
    bool m_wasThere = false;
};

} // namespace tarnwick::defaults
