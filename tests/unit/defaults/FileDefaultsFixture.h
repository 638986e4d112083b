#pragma once

#include "platform/defaults/FileDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/Files.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace tarnwick::defaults {

/// A file of preferences in a folder of its own.
class FileDefaultsFixture : public testing::Test {
protected:
    void fill(const QByteArray& bytes) { writeFile(path, bytes); }

    QJsonObject content() {
        const auto document = QJsonDocument::fromJson(readFile(path));
        EXPECT_TRUE(document.isObject());
        return document.object();
    }

    std::unique_ptr<FileDefaults> open() {
        return std::make_unique<FileDefaults>(path, dispatcher,
                                              [this](const QString& line) { reports.append(line); });
    }

    /// The watcher's news, and the time that they are left to settle.
    void quieten() {
        QCoreApplication::processEvents();
        dispatcher.advance(DefaultsFile::quietTime);
    }

    /// Names in the file's folder, without the lock.
    QStringList files() {
        auto names = QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden);
        names.removeAll("defaults.json.lock");
        return names;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("tarnwick/defaults.json");
    dispatch::VirtualDispatcher dispatcher;
    QStringList reports;
};

} // namespace tarnwick::defaults
