#include "tests/desktop/sequence/ProbedProgram.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QJsonDocument>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr int startTime = 30'000; // ms, at the longest
constexpr int answerTime = 20'000;

bool isReadable(int descriptor, int milliseconds) {
    pollfd waiting{descriptor, POLLIN, 0};
    return poll(&waiting, 1, milliseconds) == 1;
}

} // namespace

ProbedProgram::ProbedProgram(const QString& program, const QString& probe)
    : m_player(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "sequences") {
    m_player.put({{"Identity", "Sequences"}}, {});
    m_player.put(playing(metadata("Uno", "Prova", "Suoni")));
    m_player.appear();

    const QByteArray path = QFile::encodeName(m_folder.filePath("probe"));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
    listen(listener, 1);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_PRELOAD", probe);
    environment.insert("TARNWICK_PROBE", QFile::decodeName(path));
    m_process.setProcessEnvironment(environment);
    m_logPath = m_folder.filePath("log");
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(m_logPath);
    m_process.start(program, {});
    if (isReadable(listener, startTime))
        m_connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    close(listener);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(startTime);
    while (m_connection >= 0 && !state().is("isReady") && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(20ms);
}

ProbedProgram::~ProbedProgram() {
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished();
    if (m_connection >= 0)
        close(m_connection);
}

ProgramState ProbedProgram::state() {
    const char question = '?';
    QByteArray answer;
    if (m_connection < 0 || send(m_connection, &question, 1, MSG_NOSIGNAL) != 1)
        return {};
    while (!answer.endsWith('\n')) {
        char part[4096];
        const auto count = isReadable(m_connection, answerTime) ? read(m_connection, part, sizeof part) : 0;
        if (count <= 0)
            return {};
        answer.append(part, count);
    }
    return {QJsonDocument::fromJson(answer).object()};
}

void ProbedProgram::show() {
    auto call = QDBusMessage::createMethodCall("org.tarnwick.Tarnwick", "/org/tarnwick/Tarnwick",
                                               "org.freedesktop.Application", "Activate");
    call.setArguments({QVariantMap()});
    QDBusConnection::sessionBus().call(call, QDBus::Block, answerTime);
}

QString ProbedProgram::takeLog() {
    QFile file(m_logPath);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(m_logRead))
        return {};
    const QByteArray text = file.readAll();
    m_logRead += text.size();
    QStringList said;
    for (const QString& line : QString::fromUtf8(text).split('\n', Qt::SkipEmptyParts))
        if (!line.startsWith(u"Errore") && !line.startsWith(u"❌") && !line.startsWith(u"✅"))
            said.append(line);
    return said.join('\n');
}

int ProbedProgram::skips() const {
    return int(m_player.calls("Next").size() + m_player.calls("Previous").size());
}

} // namespace tarnwick
