#include "platform/launchctl/Launchctl.h"

#include "platform/launchctl/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QXmlStreamReader>

#include <algorithm>

namespace tarnwick::launchctl {

namespace {

constexpr int longestRun = 30'000; // ms

class SystemLaunchctl : public Launchctl {
public:
    explicit SystemLaunchctl(QString program) : m_program(std::move(program)) {}

    QString run(const QStringList& arguments) override {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(m_program, arguments, QIODevice::ReadOnly);
        if (!process.waitForStarted())
            return process.errorString();
        process.waitForFinished(longestRun);
        return {};
    }
    bool isRegistered(const QString& file) const override { return QFileInfo::exists(file); }
    void forget(const QString&) override {}

private:
    const QString m_program;
};

/// What an agent's property list says.
struct Agent {
    QString label;
    QStringList programArguments;
    bool runAtLoad = false;

    /// Whether it can be and wants to be started.
    bool isStarted() const {
        return runAtLoad && !programArguments.isEmpty() && !label.isEmpty() && !label.contains(u'/');
    }
};

Agent readAgent(QIODevice& file) {
    Agent agent;
    QXmlStreamReader xml(&file);
    QString key;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        if (name == u"key")
            key = xml.readElementText();
        else if (name == u"string" && key == u"Label")
            agent.label = xml.readElementText();
        else if (name == u"string" && key == u"ProgramArguments")
            agent.programArguments.append(xml.readElementText());
        else if (name == u"true" && key == u"RunAtLoad")
            agent.runAtLoad = true;
    }
    return agent;
}

const QString agentKey = QStringLiteral("X-Tarnwick-Agent=");

/// The entry starts the program only while the agent's file is there, whoever may have removed it.
QByteArray autostartEntry(const Agent& agent, const QString& file) {
    const QString command = QStringLiteral("test -e \"$0\" && exec \"$@\"");
    const QStringList exec =
        QStringList{QStringLiteral("/bin/sh"), QStringLiteral("-c"), command, file} + agent.programArguments;
    const QString name = agent.label.section(u'.', -1);
    return (QStringLiteral("[Desktop Entry]\nType=Application\nName=") + stringValue(name) +
            QStringLiteral("\nIcon=") + stringValue(agent.label) + QStringLiteral("\nExec=") +
            execValue(exec) + QStringLiteral("\nTerminal=false\n") + agentKey + stringValue(file) +
            QStringLiteral("\n"))
        .toUtf8();
}

/// The lines of the group that says what is started, sorted.
QList<QByteArray> linesOfEntry(const QByteArray& entry) {
    QList<QByteArray> lines;
    bool isInside = false;
    for (const QByteArray& line : entry.split('\n')) {
        if (line.startsWith('['))
            isInside = line.trimmed() == "[Desktop Entry]";
        if (isInside && !line.trimmed().isEmpty())
            lines.append(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace

std::unique_ptr<Launchctl> makeLaunchctl() {
    if (const QString program = QStringLiteral("/bin/launchctl"); QFileInfo(program).isExecutable())
        return std::make_unique<SystemLaunchctl>(program);
    return std::make_unique<AutostartLaunchctl>(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/autostart"));
}

AutostartLaunchctl::AutostartLaunchctl(QString folder) : m_folder(std::move(folder)) {}

QString AutostartLaunchctl::run(const QStringList& arguments) {
    if (arguments.size() == 3 && arguments.first() == u"bootstrap")
        return bootstrap(arguments.last());
    return {}; // what is unloaded starts again at the next login, so its entry stays
}

QString AutostartLaunchctl::bootstrap(const QString& file) const {
    QFile list(file);
    if (!list.open(QIODevice::ReadOnly))
        return list.errorString();
    const Agent agent = readAgent(list);
    if (!agent.isStarted())
        return {};
    if (!QDir().mkpath(m_folder))
        return QStringLiteral("%1: the folder cannot be made").arg(m_folder);
    QSaveFile entry(entryPath(agent.label));
    const QByteArray text = autostartEntry(agent, file);
    if (!entry.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || entry.write(text) != text.size() ||
        !entry.commit())
        return entry.errorString();
    return {};
}

/// Desktops add lines of their own to an entry; what it starts is what counts.
bool AutostartLaunchctl::isRegistered(const QString& file) const {
    QFile list(file);
    if (!list.open(QIODevice::ReadOnly))
        return false;
    const Agent agent = readAgent(list);
    QFile entry(entryPath(agent.label));
    if (!agent.isStarted() || !entry.open(QIODevice::ReadOnly))
        return false;
    const auto held = linesOfEntry(entry.readAll());
    const auto wanted = linesOfEntry(autostartEntry(agent, file));
    return std::includes(held.begin(), held.end(), wanted.begin(), wanted.end());
}

QString AutostartLaunchctl::entryPath(const QString& label) const {
    return m_folder + u'/' + label + QStringLiteral(".desktop");
}

void AutostartLaunchctl::forget(const QString& file) {
    const QByteArray line = '\n' + (agentKey + stringValue(file)).toUtf8() + '\n';
    const auto entries = QDir(m_folder).entryInfoList({QStringLiteral("*.desktop")}, QDir::Files);
    for (const QFileInfo& info : entries) {
        QFile entry(info.filePath());
        if (entry.open(QIODevice::ReadOnly) && entry.readAll().contains(line))
            entry.remove();
    }
}

} // namespace tarnwick::launchctl
