#include "players/mpris/PlayerLauncher.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTextStream>

namespace tarnwick::players {

namespace {

const QString applications = QStringLiteral("applications/");
const QString suffix = QStringLiteral(".desktop");

/// The value of `key` in the group `[group]` of a file of the desktop; empty when it is not there.
QString valueIn(const QString& path, const QString& group, const QString& key) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream lines(&file);
    bool isInGroup = false;
    for (QString line; lines.readLineInto(&line, 10000);) {
        if (line.startsWith(u'['))
            isInGroup = line.trimmed() == u'[' + group + u']';
        else if (isInGroup && line.section(u'=', 0, 0).trimmed() == key)
            return line.section(u'=', 1).trimmed();
    }
    return {};
}

QString entry(const QString& desktopFile, const char* key) {
    return valueIn(desktopFile, QStringLiteral("Desktop Entry"), QLatin1String(key));
}

QString locate(const QString& name) {
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, applications + name);
}

/// The desktop file of a player that a person calls `name`: by the file's name, its last part, or the
/// program's name.
QString findByName(const QString& name) {
    if (const QString exact = locate(name + suffix); !exact.isEmpty())
        return exact;
    const auto is = [&](const QString& text) { return text.compare(name, Qt::CaseInsensitive) == 0; };
    const QStringList folders = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, applications,
                                                          QStandardPaths::LocateDirectory);
    for (const QString& folder : folders) {
        for (const QFileInfo& file : QDir(folder).entryInfoList({u'*' + suffix}, QDir::Files, QDir::Name)) {
            const QString base = file.completeBaseName();
            if (is(base) || is(base.section(u'.', -1)) || is(entry(file.filePath(), "Name")))
                return file.filePath();
        }
    }
    return {};
}

/// The desktop's choice for audio files.
QString findDefault() {
    QStringList lists =
        QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, QStringLiteral("mimeapps.list"));
    lists += QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                       applications + QStringLiteral("mimeapps.list"));
    const QStringList caches = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                         applications + QStringLiteral("mimeinfo.cache"));
    for (const char* type : {"audio/flac", "audio/mpeg", "audio/mp4", "audio/ogg", "audio/x-vorbis+ogg"}) {
        QStringList choices;
        for (const QString& list : lists)
            choices += valueIn(list, QStringLiteral("Default Applications"), QLatin1String(type)).split(u';');
        for (const QString& cache : caches)
            choices += valueIn(cache, QStringLiteral("MIME Cache"), QLatin1String(type)).split(u';');
        for (const QString& choice : std::as_const(choices)) {
            if (const QString path = choice.isEmpty() ? QString() : locate(choice); !path.isEmpty())
                return path;
        }
    }
    return {};
}

/// The program and its arguments, without the places for files.
QStringList commandOf(const QString& desktopFile) {
    QStringList command = QProcess::splitCommand(entry(desktopFile, "Exec"));
    command.removeIf([](const QString& word) { return word.size() == 2 && word.startsWith(u'%'); });
    return command;
}

} // namespace

void PlayerLauncher::remember(const QString& desktopEntry) const {
    if (m_stateFile.isEmpty() || desktopEntry.isEmpty() || desktopEntry.contains(u'/'))
        return;
    if (remembered() == desktopEntry)
        return;
    QSaveFile file(m_stateFile);
    if (!QDir().mkpath(QFileInfo(m_stateFile).path()) || !file.open(QIODevice::WriteOnly))
        return;
    file.write(desktopEntry.toUtf8());
    file.commit();
}

QString PlayerLauncher::remembered() const {
    QFile file(m_stateFile);
    if (m_stateFile.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(1000));
}

QString PlayerLauncher::desktopFile(const QString& name) const {
    if (!name.isEmpty())
        return findByName(name);
    const QString last = remembered();
    const QString path = last.isEmpty() ? QString() : findByName(last);
    return path.isEmpty() ? findDefault() : path;
}

std::optional<QString> PlayerLauncher::start(const QString& name) const {
    const QString path = desktopFile(name);
    if (path.isEmpty())
        return name.isEmpty() ? QStringLiteral("no music player is installed")
                              : QStringLiteral("no player called %1 is installed").arg(name);
    const QStringList command = commandOf(path);
    QProcess process;
    process.setProgram(command.value(0));
    process.setArguments(command.mid(1));
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (!m_busAddress.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_busAddress);
        process.setProcessEnvironment(environment);
    }
    if (command.isEmpty() || !process.startDetached())
        return QStringLiteral("%1 cannot be started").arg(entry(path, "Name"));
    return std::nullopt;
}

} // namespace tarnwick::players
