#include "platform/power/Inhibition.h"

#include "platform/power/DBusPowerManager.h"

#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QFileInfo>
#include <QVariantMap>

#include <atomic>

namespace tarnwick::power {

namespace {

const auto applicationName = QStringLiteral("Tarnwick");
constexpr unsigned portalIdleFlag = 8;

/// Whether there is a session bus, without the start of one that connecting could mean.
bool hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

QString uniqueName() {
    static std::atomic<int> number = 0;
    return QStringLiteral("tarnwick-power-%1").arg(++number);
}

QDBusConnection open(QDBusConnection::BusType type, const QString& address, const QString& name) {
    if (!address.isEmpty())
        return QDBusConnection::connectToBus(address, name);
    if (type == QDBusConnection::SessionBus && !hasSessionBus())
        return QDBusConnection(name);
    return QDBusConnection::connectToBus(type, name);
}

QDBusMessage screenSaverCall(const QString& to, const QString& method) {
    return QDBusMessage::createMethodCall(to, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          QStringLiteral("org.freedesktop.ScreenSaver"), method);
}

QDBusMessage request(Service service, const QString& reason) {
    QDBusMessage message;
    switch (service) {
    case Service::ScreenSaver:
        message = screenSaverCall(nameOf(service), QStringLiteral("Inhibit"));
        message << applicationName << reason;
        break;
    case Service::Portal:
        message = QDBusMessage::createMethodCall(
            nameOf(service), QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.Inhibit"), QStringLiteral("Inhibit"));
        message << QString() << portalIdleFlag << QVariantMap{{QStringLiteral("reason"), reason}};
        break;
    case Service::Logind:
        message = QDBusMessage::createMethodCall(nameOf(service), QStringLiteral("/org/freedesktop/login1"),
                                                 QStringLiteral("org.freedesktop.login1.Manager"),
                                                 QStringLiteral("Inhibit"));
        message << QStringLiteral("idle") << applicationName << reason << QStringLiteral("block");
        break;
    }
    return message;
}

} // namespace

Connection::Connection(QDBusConnection::BusType type, const QString& address)
    : m_name(uniqueName()), m_bus(open(type, address, m_name)) {}

Connection::~Connection() { QDBusConnection::disconnectFromBus(m_name); }

QDBusMessage Connection::call(const QDBusMessage& message) const {
    return m_bus.call(message, QDBus::Block, int(DBusPowerManager::timeout.count()));
}

QDBusConnection::BusType busOf(Service service) {
    return service == Service::Logind ? QDBusConnection::SystemBus : QDBusConnection::SessionBus;
}

QString nameOf(Service service) {
    switch (service) {
    case Service::ScreenSaver:
        return QStringLiteral("org.freedesktop.ScreenSaver");
    case Service::Portal:
        return QStringLiteral("org.freedesktop.portal.Desktop");
    case Service::Logind:
        break;
    }
    return QStringLiteral("org.freedesktop.login1");
}

/// A new connection for each: a request that was given up must not be granted later on.
std::unique_ptr<Inhibition> Inhibition::ask(Service service, const QString& address, const QString& reason,
                                            bool mayStart) {
    auto connection = std::make_unique<Connection>(busOf(service), address);
    if (!connection->isConnected())
        return nullptr;
    QDBusMessage message = request(service, reason);
    message.setAutoStartService(mayStart);
    const QDBusMessage reply = connection->call(message);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return nullptr;
    return std::unique_ptr<Inhibition>(new Inhibition(service, std::move(connection), reply));
}

Inhibition::Inhibition(Service service, std::unique_ptr<Connection> connection, const QDBusMessage& reply)
    : m_service(service), m_connection(std::move(connection)), m_owner(reply.service()),
      m_held(reply.arguments().constFirst()) {}

void Inhibition::end() {
    QDBusMessage message;
    switch (m_service) {
    case Service::ScreenSaver:
        message = screenSaverCall(m_owner, QStringLiteral("UnInhibit"));
        message << m_held.toUInt();
        break;
    case Service::Portal:
        message = QDBusMessage::createMethodCall(m_owner, m_held.value<QDBusObjectPath>().path(),
                                                 QStringLiteral("org.freedesktop.portal.Request"),
                                                 QStringLiteral("Close"));
        break;
    case Service::Logind:
        return; // the descriptor is closed with this object
    }
    m_connection->call(message);
}

} // namespace tarnwick::power
