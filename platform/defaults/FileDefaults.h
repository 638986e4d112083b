#pragma once

#include "platform/defaults/Defaults.h"
#include "platform/defaults/DefaultsFile.h"
#include "platform/dispatch/Dispatcher.h"

#include <QFileSystemWatcher>

#include <memory>

namespace tarnwick::defaults {

/// Defaults in a file that several processes share, and that people edit. It is read again when it has been
/// quiet for `DefaultsFile::quietTime`.
class FileDefaults : public Defaults {
public:
    /// How long `setSoon` gathers what comes before it writes; it writes on another thread.
    static constexpr dispatch::Duration gatheringTime = std::chrono::milliseconds(50);

    /// Where the file lies: in the user's configuration folder.
    static QString standardPath();

    /// Reads the file at `path`. `dispatcher` must outlive the store; `report` as for `DefaultsFile`.
    FileDefaults(const QString& path, dispatch::Dispatcher& dispatcher, Report report);

    /// Writes what is not written yet.
    ~FileDefaults() override;

    bool set(const QString& key, const Value& value) override;
    void setSoon(const QString& key, const Value& value) override;
    bool update(const QString& key, const Change& change) override;
    std::optional<Value> value(const QString& key) const override;

private:
    void watch();
    void watchNewFolder();
    void somethingHappened();
    void reload();

    dispatch::Dispatcher& m_dispatcher;
    const std::shared_ptr<DefaultsFile> m_file;
    QJsonObject m_values;
    QFileSystemWatcher m_watcher;
    dispatch::WorkItem m_writing;
    dispatch::WorkItem m_reloading;
    bool m_writeIsDue = false;
};

} // namespace tarnwick::defaults
