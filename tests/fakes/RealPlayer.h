#pragma once

#include "tests/fakes/Files.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>
#include <sys/wait.h>

#include <csignal>
#include <utility>
#include <vector>

namespace tarnwick {

/// A program that a test starts on a bus of its own, without sound, screen or the user's settings.
class RealPlayer {
public:
    explicit RealPlayer(const QString& busAddress) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", busAddress);
        environment.insert("HOME", m_home.path());
        environment.insert("XDG_CONFIG_HOME", m_home.filePath("config"));
        environment.insert("XDG_DATA_HOME", m_home.filePath("data"));
        environment.insert("XDG_CACHE_HOME", m_home.filePath("cache"));
        environment.insert("XDG_RUNTIME_DIR", m_home.path());
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
    }
    RealPlayer(const RealPlayer&) = delete;
    RealPlayer& operator=(const RealPlayer&) = delete;
    ~RealPlayer() {
        resume();
        m_process.kill();
        m_process.waitForFinished();
    }

    /// A file in the program's home.
    void writeFile(const QString& name, const QByteArray& content) {
        tarnwick::writeFile(m_home.filePath(name), content);
    }
    /// Before the start.
    void setVariable(const QString& name, const QString& value) {
        QProcessEnvironment environment = m_process.processEnvironment();
        environment.insert(name, value);
        m_process.setProcessEnvironment(environment);
    }
    QString home() const { return m_home.path(); }

    bool start(const QString& program, const QStringList& arguments) {
        m_process.start(program, arguments);
        return m_process.waitForStarted();
    }
    /// Another program with the same surroundings; its output.
    QByteArray run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.setProcessEnvironment(m_process.processEnvironment());
        process.start(program, arguments);
        process.waitForFinished(10000);
        return process.readAllStandardOutput() + process.readAllStandardError();
    }
    QByteArray output() { return m_process.readAll(); }

    /// Stops answering, as a program that hangs does; on a busy machine its threads may take a moment.
    void suspend() {
        const auto id = static_cast<id_t>(m_process.processId());
        ::kill(static_cast<pid_t>(id), SIGSTOP);
        siginfo_t stopped{};
        EXPECT_EQ(::waitid(P_PID, id, &stopped, WSTOPPED | WNOWAIT | __WALL), 0);
    }
    void resume() {
        if (m_process.processId() > 0)
            ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
    }
    void kill() {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QTemporaryDir m_home;
    QProcess m_process;
};

/// Tags by their names in ffmpeg.
using Tags = std::vector<std::pair<QString, QString>>;

/// Makes a sound of `seconds` at `path`, in the format of its suffix or, with `codec`, in that one. Whether
/// it worked.
inline bool makeSound(const QString& path, const Tags& tags, int seconds = 20, const QString& codec = {}) {
    QDir().mkpath(QFileInfo(path).path());
    const QString sine = QStringLiteral("sine=440:sample_rate=44100:duration=%1").arg(seconds);
    QStringList arguments{"-v", "error", "-y", "-f", "lavfi", "-i", sine};
    for (const auto& [name, value] : tags)
        arguments << "-metadata" << name + u'=' + value;
    if (!codec.isEmpty())
        arguments << "-c:a" << codec;
    if (path.endsWith(".aiff"))
        arguments << "-write_id3v2"
                  << "1";
    arguments << path;
    return QProcess::execute("ffmpeg", arguments) == 0;
}

} // namespace tarnwick
