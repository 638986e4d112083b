#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace tarnwick {

/// Writes a file, and makes the folders that lead to it; its path.
inline QString writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)) << qPrintable(path);
    file.write(bytes);
    return path;
}

/// Empty when there is no such file.
inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tarnwick
