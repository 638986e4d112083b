#include "platform/defaults/FileDefaults.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QStandardPaths>

#include <algorithm>
#include <thread>

namespace tarnwick::defaults {

namespace {

QJsonValue toJson(const Value& value) {
    if (const auto* list = std::get_if<QStringList>(&value))
        return QJsonArray::fromStringList(*list);
    if (const auto* text = std::get_if<QString>(&value))
        return *text;
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return std::get<bool>(value);
}

std::optional<Value> fromJson(const QJsonValue& value) {
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::Double:
        return value.toDouble();
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Array: {
        QStringList texts;
        for (const auto& item : value.toArray()) {
            if (!item.isString())
                return std::nullopt;
            texts.append(item.toString());
        }
        return texts;
    }
    default:
        return std::nullopt;
    }
}

} // namespace

QString FileDefaults::standardPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/tarnwick/defaults.json");
}

FileDefaults::FileDefaults(const QString& path, dispatch::Dispatcher& dispatcher, Report report)
    : m_dispatcher(dispatcher),
      m_file(std::make_shared<DefaultsFile>(path, std::move(report), [&dispatcher](dispatch::Duration pause) {
          if (!dispatcher.sleepFor(pause))
              std::this_thread::sleep_for(pause); // what is left to be stored at the end waits all the same
      })) {
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FileDefaults::somethingHappened);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileDefaults::somethingHappened);
    m_file->tidy();
    watch(); // before the file is read: what is changed between the two is told
    m_values = m_file->load();
}

FileDefaults::~FileDefaults() {
    m_writing.cancel();
    m_reloading.cancel();
    m_file->write();
}

bool FileDefaults::set(const QString& key, const Value& value) {
    m_values.insert(key, toJson(value));
    m_file->change(key, toJson(value));
    const bool isWritten = m_file->write();
    watchNewFolder();
    return isWritten;
}

void FileDefaults::setSoon(const QString& key, const Value& value) {
    m_values.insert(key, toJson(value));
    m_file->change(key, toJson(value));
    if (m_writeIsDue)
        return;
    m_writeIsDue = true;
    m_writing = m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), gatheringTime, [this] {
        m_writeIsDue = false;
        m_dispatcher.globalQueue(dispatch::QualityOfService::Default).async([file = m_file] {
            file->write();
        });
    });
}

bool FileDefaults::update(const QString& key, const Change& change) {
    const auto changed = [&](const QJsonValue& stored) {
        const auto value = change(fromJson(stored));
        return value ? toJson(*value) : stored;
    };
    if (const auto stored = m_file->update(key, changed)) {
        m_values.insert(key, *stored);
        watchNewFolder();
        return true;
    }
    const QJsonValue unstored = changed(m_values.value(key));
    if (unstored.isUndefined())
        return false;
    m_values.insert(key, unstored);
    m_file->change(key, unstored);
    return false;
}

std::optional<Value> FileDefaults::value(const QString& key) const { return fromJson(m_values.value(key)); }

/// The folder, because a file that is replaced is another one to the watcher; and the file, because the
/// folder does not notice what is written into it.
void FileDefaults::watch() {
    const QString folder = QFileInfo(m_file->path()).path();
    if (m_watcher.directories().isEmpty() && QFileInfo(folder).isDir())
        m_watcher.addPath(folder);
    if (!m_watcher.files().isEmpty())
        m_watcher.removePath(m_file->path()); // it may watch one that was replaced
    if (QFileInfo::exists(m_file->path()))
        m_watcher.addPath(m_file->path());
}

/// After a write that may have made the folder.
void FileDefaults::watchNewFolder() {
    if (m_watcher.directories().isEmpty())
        watch();
}

void FileDefaults::somethingHappened() {
    watch();
    m_reloading.cancel();
    m_reloading =
        m_dispatcher.asyncAfter(m_dispatcher.mainQueue(), DefaultsFile::quietTime, [this] { reload(); });
}

void FileDefaults::reload() {
    const QJsonObject before = std::exchange(m_values, m_file->load(true));
    QStringList keys = before.keys() + m_values.keys();
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    const QJsonObject now = m_values; // a receiver may set values
    for (const QString& key : std::as_const(keys)) {
        if (before.value(key) != now.value(key))
            Q_EMIT changedElsewhere(key);
    }
}

} // namespace tarnwick::defaults
