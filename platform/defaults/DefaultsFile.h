#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>
#include <mutex>
#include <optional>

namespace tarnwick::defaults {

/// Takes one line about something that went wrong.
using Report = std::function<void(const QString& line)>;

/// The file behind `FileDefaults`: a JSON object. It is only ever replaced as a whole, under a lock
/// that lies beside it, so it can be read at any moment, and changes of several processes add up.
///
/// The lock is the kernel's own (`flock`) and not a QLockFile, because it ends with its holder however
/// that ends; a QLockFile whose owner is killed between creating and filling it locks everybody out
/// until it has grown old. Any thread may use it.
class DefaultsFile {
public:
    /// `report` gets a line when the file cannot be written, the first time in a row, and when it had
    /// to be set aside. It is called on the thread of the operation.
    DefaultsFile(QString path, Report report);

    /// What the file holds, with the changes that are not written yet. A file that cannot be read or
    /// is no JSON object is moved to a free name beside it, and nothing is what it holds.
    QJsonObject load();

    /// Removes what processes that were killed while writing have left behind.
    void tidy();

    /// Notes `value` for the next `write`.
    void change(const QString& key, const QJsonValue& value);

    /// Writes what was noted into the file. Whether it could; if not, it stays noted.
    bool write();

    /// Replaces the value under `key` by what `change` makes of it, with nobody writing in between, and
    /// writes what was noted too. A value that is not there is undefined, and stays so when `change` says
    /// so. The new value; none when the file could not be written.
    std::optional<QJsonValue> update(const QString& key,
                                     const std::function<QJsonValue(const QJsonValue& now)>& change);

    const QString& path() const { return m_path; }

private:
    class Lock;

    std::optional<QJsonObject> read(QString* error) const;
    QJsonObject unwritten();
    bool write(const std::function<void(QJsonObject& content)>& amend);
    QString replace(const std::function<void(QJsonObject& content)>& amend);
    QString setAside(const QString& reason);

    const QString m_path;
    const Report m_report;
    std::mutex m_writing; ///< held while the file is replaced
    bool m_failing = false;
    std::mutex m_mutex; ///< held for moments
    QJsonObject m_changes;
};

} // namespace tarnwick::defaults
