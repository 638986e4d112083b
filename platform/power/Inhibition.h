#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>

#include <array>
#include <memory>
#include <optional>

namespace tarnwick::power {

/// A bus connection that is nobody else's. Who was asked for something over it forgets that when it closes.
class Connection {
public:
    /// `address` is where the bus is; empty means the usual one, which is not started for it.
    Connection(QDBusConnection::BusType type, const QString& address);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Blocks for as long as a service may take.
    QDBusMessage call(const QDBusMessage& message) const;

    bool isConnected() const { return m_bus.isConnected(); }
    const QDBusConnection& bus() const { return m_bus; }

private:
    const QString m_name;
    const QDBusConnection m_bus;
};

/// Who keeps a display awake when asked, the best first.
enum class Service { ScreenSaver, Portal, Logind };
inline constexpr std::array allServices{Service::ScreenSaver, Service::Portal, Service::Logind};

QDBusConnection::BusType busOf(Service service);
QString nameOf(Service service);

/// What a service has granted. It ends with this object at the latest, because its connection does.
class Inhibition {
public:
    /// Asks `service` on the bus at `address`, and blocks for as long as it may take; null unless it grants.
    /// `mayStart`: the bus may start it for that.
    static std::unique_ptr<Inhibition> ask(Service service, const QString& address, const QString& reason,
                                           bool mayStart);

    /// Gives it back, and blocks for as long as that may take. Only the process that has granted it is told:
    /// its successor under the same name may have granted something else by the same number.
    void end();

    Service service() const { return m_service; }

    /// The unique bus name of the process that has granted it.
    const QString& owner() const { return m_owner; }

private:
    Inhibition(Service service, std::unique_ptr<Connection> connection, const QDBusMessage& reply);

    const Service m_service;
    const std::unique_ptr<Connection> m_connection;
    const QString m_owner;
    const QVariant m_held; ///< a cookie, a request's path, or the descriptor that ends it when it is closed
};

} // namespace tarnwick::power
