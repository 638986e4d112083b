#include "platform/defaults/DefaultsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <thread>

namespace tarnwick::defaults {

namespace {

using namespace std::chrono_literals;

/// A writer holds the lock for milliseconds; one that was stopped in the middle must not stop us too.
constexpr auto longestWait = 1s;
constexpr auto pauseBetweenTries = 500us;
constexpr auto pauseBetweenLooks = 10ms;

void merge(QJsonObject& into, const QJsonObject& changes) {
    for (auto it = changes.begin(); it != changes.end(); ++it)
        into.insert(it.key(), it.value());
}

} // namespace

/// Keeps other writers out as long as it lives.
class DefaultsFile::Lock {
public:
    explicit Lock(const QString& path)
        : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        const auto deadline = std::chrono::steady_clock::now() + longestWait;
        while (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
            if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() > deadline) {
                m_error = errno == EWOULDBLOCK ? QStringLiteral("it stays locked") : qt_error_string(errno);
                return;
            }
            std::this_thread::sleep_for(pauseBetweenTries);
        }
        if (m_descriptor < 0)
            m_error = qt_error_string(errno);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    /// Why it is not held; empty when it is.
    const QString& error() const { return m_error; }

private:
    const int m_descriptor;
    QString m_error;
};

/// Tells, without reading it, whether something has happened to a file.
class DefaultsFile::Mark {
public:
    explicit Mark(const QString& path) {
        struct stat file = {};
        if (::stat(QFile::encodeName(path).constData(), &file) == 0)
            m_fields = {qint64(file.st_dev), qint64(file.st_ino), qint64(file.st_size),
                        qint64(file.st_ctim.tv_sec), qint64(file.st_ctim.tv_nsec)};
    }
    bool operator==(const Mark&) const = default;

private:
    std::array<qint64, 5> m_fields{};
};

DefaultsFile::DefaultsFile(QString path, Report report, Pause pause)
    : m_path(std::move(path)), m_report(std::move(report)), m_pause(std::move(pause)),
      m_wasThere(QFileInfo::exists(lockPath())) {}

QJsonObject DefaultsFile::load(bool isQuiet) {
    const QJsonObject changes = unwritten(); // first: what is written from here on is in the file
    bool isWhole = isQuiet;
    const Content content = isQuiet ? read() : readWhole(&isWhole);
    if (!content.error.isEmpty())
        m_report(QStringLiteral("The preferences in %1 cannot be read: %2").arg(m_path, content.error));
    const std::scoped_lock guard(m_mutex);
    if (content.values)
        m_last = *content.values;
    m_wasThere = m_wasThere || content.values;
    m_lost = content.values || !isWhole ? nullptr : std::make_shared<Mark>(m_path);
    QJsonObject values = m_last;
    merge(values, changes);
    return values;
}

void DefaultsFile::tidy() {
    const QFileInfo file(m_path);
    static const QRegularExpression ending(QStringLiteral("^\\.[A-Za-z]{6}$")); // QSaveFile's
    const QDir folder = file.dir();
    const auto names = folder.entryList({file.fileName() + QStringLiteral(".*")}, QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        if (!ending.match(name.mid(file.fileName().size())).hasMatch())
            continue;
        const Lock lock(lockPath()); // so nobody is writing one right now
        if (lock.error().isEmpty())
            QFile::remove(folder.filePath(name));
    }
}

void DefaultsFile::change(const QString& key, const QJsonValue& value) {
    const std::scoped_lock guard(m_mutex);
    m_changes.insert(key, value);
}

bool DefaultsFile::write() {
    const std::scoped_lock oneAtATime(m_writing);
    return unwritten().isEmpty() || write([](QJsonObject&) {});
}

std::optional<QJsonValue>
DefaultsFile::update(const QString& key, const std::function<QJsonValue(const QJsonValue& now)>& change) {
    const std::scoped_lock oneAtATime(m_writing);
    QJsonValue result;
    const bool written = write([&](QJsonObject& content) {
        result = change(content.contains(key) ? content.value(key) : QJsonValue(QJsonValue::Undefined));
        if (!result.isUndefined())
            content.insert(key, result);
    });
    return written ? std::optional(result) : std::nullopt;
}

bool DefaultsFile::write(const std::function<void(QJsonObject& content)>& amend) {
    const QJsonObject changes = unwritten();
    const QString error = replace([&](QJsonObject& content) {
        merge(content, changes);
        amend(content);
    });
    if (!error.isEmpty() && !m_failing)
        m_report(QStringLiteral("The preferences cannot be saved to %1: %2").arg(m_path, error));
    m_failing = !error.isEmpty();
    if (m_failing)
        return false;
    const std::scoped_lock guard(m_mutex);
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        if (m_changes.value(it.key()) == it.value())
            m_changes.remove(it.key());
    }
    return true;
}

QJsonObject DefaultsFile::unwritten() {
    const std::scoped_lock guard(m_mutex);
    return m_changes;
}

/// Returns the error, empty for none.
QString DefaultsFile::replace(const std::function<void(QJsonObject& content)>& amend) {
    if (!QDir().mkpath(QFileInfo(m_path).path()))
        return QStringLiteral("its folder cannot be made");
    const Lock lock(lockPath());
    if (!lock.error().isEmpty())
        return lock.error();
    bool isWhole = true;
    Content content = readWhole(&isWhole);
    if (!isWhole)
        return QStringLiteral("somebody else is writing it");
    if (!content.error.isEmpty())
        if (const QString failure = setAside(content.error); !failure.isEmpty())
            return failure;
    if (!content.values) {
        const std::scoped_lock guard(m_mutex);
        content.values = m_last;
    }
    amend(*content.values);
    QSaveFile file(m_path);
    const QByteArray bytes = QJsonDocument(*content.values).toJson();
    // Unbuffered, because commit() does not notice that the last buffer found no room.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() ||
        !file.commit())
        return file.errorString();
    const std::scoped_lock guard(m_mutex);
    m_last = *content.values;
    m_wasThere = true;
    return {};
}

QString DefaultsFile::lockPath() const { return m_path + QStringLiteral(".lock"); }

DefaultsFile::Content DefaultsFile::read() const {
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, QFileInfo::exists(m_path) ? file.errorString() : QString()};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {{}, file.errorString()};
    QJsonParseError parseError;
    const auto document = QJsonDocument::fromJson(bytes, &parseError);
    if (document.isObject())
        return {document.object(), {}};
    return {{}, document.isNull() ? parseError.errorString() : QStringLiteral("it holds no object")};
}

/// Waits until the file can be read, or its writer is done; `*isWhole` tells whether one of the two came.
DefaultsFile::Content DefaultsFile::readWhole(bool* isWhole) {
    Mark mark(m_path);
    Content content = read();
    dispatch::Duration waited{}, quiet{};
    while (!isBelieved(content, mark) && quiet < quietTime && waited < longestWait) {
        m_pause(pauseBetweenLooks);
        waited += pauseBetweenLooks;
        const Mark before = std::exchange(mark, Mark(m_path));
        quiet = mark == before ? quiet + pauseBetweenLooks : dispatch::Duration{};
        content = read();
    }
    *isWhole = quiet >= quietTime || isBelieved(content, mark);
    return content;
}

/// Whether it needs no waiting: it can be read, it was waited for already, or there never was a file.
bool DefaultsFile::isBelieved(const Content& content, const Mark& mark) {
    const std::scoped_lock guard(m_mutex);
    return content.values || (m_lost && *m_lost == mark) || (content.error.isEmpty() && !m_wasThere);
}

/// Moves the file out of the way; returns the error, empty for none. The lock must be held.
QString DefaultsFile::setAside(const QString& reason) {
    QString name;
    for (int number = 1; name.isEmpty() || QFileInfo::exists(name); ++number)
        name = m_path + QStringLiteral(".unreadable-%1").arg(number);
    if (::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(name).constData()) != 0)
        return qt_error_string(errno);
    m_report(QStringLiteral("The preferences could not be read (%1); the file is now %2").arg(reason, name));
    return {};
}

} // namespace tarnwick::defaults
