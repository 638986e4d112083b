#include "app/desktop/RunningCopies.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick {

namespace {

const auto prefix = QStringLiteral("copy-");

/// Who looks for crashed copies may remove a file between its making and its locking.
bool isStillThere(int descriptor, const QByteArray& path) {
    struct stat held = {}, named = {};
    return fstat(descriptor, &held) == 0 && stat(path.constData(), &named) == 0 &&
           held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

int openLocked(const QByteArray& path) {
    for (int attempt = 0; attempt < 10; ++attempt) {
        const int descriptor = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (descriptor < 0)
            return -1;
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0 && isStillThere(descriptor, path))
            return descriptor;
        close(descriptor);
    }
    return -1;
}

/// Whether a copy holds the file. One that nobody holds is removed.
bool isHeld(const QByteArray& path) {
    const int descriptor = open(path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return false;
    const bool held = flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    if (!held)
        unlink(path.constData());
    close(descriptor);
    return held;
}

} // namespace

QString RunningCopies::standardFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return runtime.isEmpty() ? QString() : runtime + QStringLiteral("/tarnwick");
}

RunningCopies::RunningCopies(QString folder) : m_folder(std::move(folder)) {
    if (m_folder.isEmpty() || !QDir().mkpath(m_folder))
        return;
    const QString file = QDir(m_folder).filePath(prefix + QString::number(getpid()));
    m_descriptor = openLocked(QFile::encodeName(file));
    if (m_descriptor >= 0)
        m_file = file;
}

RunningCopies::~RunningCopies() {
    if (m_descriptor < 0)
        return;
    unlink(QFile::encodeName(m_file).constData());
    close(m_descriptor);
}

int RunningCopies::count() const {
    int others = 0;
    if (!m_folder.isEmpty())
        for (const QString& name : QDir(m_folder).entryList({prefix + u'*'}, QDir::Files))
            if (const QString file = QDir(m_folder).filePath(name); file != m_file)
                others += isHeld(QFile::encodeName(file)) ? 1 : 0;
    return others + 1;
}

} // namespace tarnwick
