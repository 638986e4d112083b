#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace tarnwick {

/// A message bus of its own, on which nothing is started by being asked for.
class PrivateBus {
public:
    PrivateBus() {
        QFile config(m_folder.filePath("bus.conf"));
        if (!config.open(QIODevice::WriteOnly))
            return;
        config.write("<busconfig><type>session</type><auth>EXTERNAL</auth><listen>unix:tmpdir=/tmp</listen>"
                     "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                     "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
        config.close();
        m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_daemon.start("dbus-daemon", {"--config-file=" + config.fileName(), "--nofork", "--print-address"});
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
        }
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    /// Empty when the bus could not be started.
    const QString& address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

} // namespace tarnwick
