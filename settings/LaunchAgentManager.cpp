#include "settings/LaunchAgentManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <unistd.h>

namespace tarnwick {

namespace {

constexpr auto documentFormat = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
    <dict>
        <key>Label</key>
        <string>%1</string>
        <key>ProgramArguments</key>
        <array>
            <string>%2</string>
            <string>--launched-at-login</string> <!-- 🔹 Aggiunto flag per riconoscere l'avvio automatico -->
        </array>
        <key>RunAtLoad</key>
        <true/>
        <key>LimitLoadToSessionType</key>
        <string>Aqua</string> <!-- Impedisce il caricamento nei processi di sistema -->
    </dict>
</plist>
)";

} // namespace

QString LaunchAgentManager::standardFolder() {
    return QDir::homePath() + QStringLiteral("/Library/LaunchAgents");
}

LaunchAgentManager::LaunchAgentManager(Parts parts) : m_parts(std::move(parts)) {}

void LaunchAgentManager::installLaunchAgent() {
    run(&LaunchAgentManager::install, QStringLiteral("❌ Errore nell'installazione del Launch Agent: "));
}

void LaunchAgentManager::removeLaunchAgent() {
    run(&LaunchAgentManager::remove, QStringLiteral("❌ Errore nella rimozione del Launch Agent: "));
}

void LaunchAgentManager::deactivateLaunchAgent() {
    run(&LaunchAgentManager::deactivate, QStringLiteral("❌ Errore nella disattivazione del Launch Agent: "));
}

void LaunchAgentManager::run(Operation operation, const QString& failure) const {
    const auto task = [this, operation, failure] {
        if (const QString error = (this->*operation)(); !error.isEmpty())
            m_parts.log(failure + error);
    };
    if (m_parts.queue)
        m_parts.queue->async(task);
    else
        task();
}

QString LaunchAgentManager::install() const {
    QFile file(agentFile());
    if (!file.open(QIODevice::ReadOnly) || file.readAll() != document()) {
        if (const QString error = writeDocument(); !error.isEmpty())
            return error;
    } else if (m_parts.launchctl.isRegistered(agentFile())) {
        return {};
    }
    return m_parts.launchctl.run(
        {QStringLiteral("bootstrap"), QStringLiteral("gui/%1").arg(::getuid()), agentFile()});
}

QString LaunchAgentManager::writeDocument() const {
    if (!QDir().mkpath(m_parts.folder))
        return QStringLiteral("%1: the folder cannot be made").arg(m_parts.folder);
    QSaveFile file(agentFile());
    const QByteArray text = document();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(text) != text.size() ||
        !file.commit())
        return file.errorString();
    return {};
}

QString LaunchAgentManager::remove() const {
    if (!isInstalled())
        return {};
    if (const QString error = deactivate(); !error.isEmpty())
        return error;
    if (QFile file(agentFile()); !file.remove() && file.exists())
        return file.errorString();
    m_parts.launchctl.forget(agentFile());
    return {};
}

QString LaunchAgentManager::deactivate() const {
    return isInstalled() ? m_parts.launchctl.run({QStringLiteral("unload"), agentFile()}) : QString();
}

QString LaunchAgentManager::agentFile() const {
    return m_parts.folder + u'/' + m_parts.identifier + QStringLiteral(".plist");
}

bool LaunchAgentManager::isInstalled() const { return QFileInfo::exists(agentFile()); }

QByteArray LaunchAgentManager::document() const {
    return QString::fromUtf8(documentFormat)
        .arg(m_parts.identifier.toHtmlEscaped(), m_parts.program.toHtmlEscaped())
        .toUtf8();
}

} // namespace tarnwick
