#pragma once

#include <QByteArray>
#include <QEventLoop>
#include <QHash>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <future>
#include <mutex>
#include <thread>

namespace tarnwick {

/// A web server on this machine that serves what a test wants, on a thread of its own.
class WebServer {
public:
    WebServer() {
        std::promise<quint16> port;
        auto future = port.get_future();
        m_thread = std::thread([this, &port] {
            QTcpServer server;
            QEventLoop loop;
            QObject::connect(&server, &QTcpServer::newConnection, &server,
                             [this, &server] { accept(server); });
            QObject::connect(&server, &QObject::objectNameChanged, &loop, &QEventLoop::quit);
            server.listen(QHostAddress::LocalHost);
            m_server = &server;
            port.set_value(server.serverPort());
            loop.exec();
        });
        m_port = future.get();
    }
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;
    ~WebServer() {
        QMetaObject::invokeMethod(m_server, [this] { m_server->setObjectName(QStringLiteral("ended")); });
        m_thread.join();
    }

    QString url(const QString& path) const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
    }
    /// Serves `answer`, head and all; an empty one never comes.
    void serveRaw(const QString& path, const QByteArray& answer) {
        const std::lock_guard lock(m_mutex);
        m_answers[path] = answer;
    }
    void serve(const QString& path, const QByteArray& body) {
        serveRaw(path, "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                           QByteArray::number(body.size()) + "\r\n\r\n" + body);
    }
    void redirect(const QString& path, const QString& to) {
        serveRaw(path, "HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 0\r\nLocation: " +
                           to.toUtf8() + "\r\n\r\n");
    }
    int requests(const QString& path) const {
        const std::lock_guard lock(m_mutex);
        return m_requests.value(path);
    }

private:
    void accept(QTcpServer& server) {
        QTcpSocket* socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            if (!socket->canReadLine())
                return;
            const QString path = QString::fromUtf8(socket->readLine()).section(u' ', 1, 1);
            socket->readAll();
            QByteArray answer;
            {
                const std::lock_guard lock(m_mutex);
                ++m_requests[path];
                answer = m_answers.value(path);
            }
            if (answer.isEmpty())
                return;
            socket->write(answer);
            socket->disconnectFromHost();
        });
    }

    mutable std::mutex m_mutex;
    QHash<QString, QByteArray> m_answers;
    QHash<QString, int> m_requests;
    QTcpServer* m_server = nullptr;
    quint16 m_port = 0;
    std::thread m_thread;
};

} // namespace tarnwick
