#include "platform/power/DBusPowerManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QFileInfo>
#include <QVariantMap>

#include <atomic>
#include <map>
#include <mutex>

namespace tarnwick::power {

namespace {

const auto applicationName = QStringLiteral("Tarnwick");
constexpr unsigned portalIdleFlag = 8;

/// The one with threads to spare: a service that hangs holds a thread for a second.
constexpr auto askingQueue = dispatch::QualityOfService::Default;

/// Whether there is a session bus, without the start of one that connecting could mean.
bool hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

/// A bus connection that is nobody else's.
class Connection {
public:
    Connection(QDBusConnection::BusType type, const QString& address) : m_bus(open(type, address, m_name)) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { QDBusConnection::disconnectFromBus(m_name); }

    bool isConnected() const { return m_bus.isConnected(); }

    /// Blocks for as long as a service may take.
    QDBusMessage call(const QDBusMessage& message) {
        return m_bus.call(message, QDBus::Block, int(DBusPowerManager::timeout.count()));
    }

private:
    static QString uniqueName() {
        static std::atomic<int> number = 0;
        return QStringLiteral("tarnwick-power-%1").arg(++number);
    }
    static QDBusConnection open(QDBusConnection::BusType type, const QString& address, const QString& name) {
        if (!address.isEmpty())
            return QDBusConnection::connectToBus(address, name);
        if (type == QDBusConnection::SessionBus && !hasSessionBus())
            return QDBusConnection(name);
        return QDBusConnection::connectToBus(type, name);
    }

    const QString m_name = uniqueName();
    QDBusConnection m_bus;
};

/// A granted request. Its end is the request's end.
class Grant {
public:
    Grant(std::unique_ptr<Connection> connection, std::optional<QDBusMessage> ending, QVariant held = {})
        : m_connection(std::move(connection)), m_ending(std::move(ending)), m_held(std::move(held)) {}
    Grant(const Grant&) = delete;
    Grant& operator=(const Grant&) = delete;
    ~Grant() = default;

    /// Ends it with a word. Blocks for as long as a service may take.
    void end() {
        if (m_ending)
            m_connection->call(*m_ending);
    }

private:
    std::unique_ptr<Connection> m_connection;
    std::optional<QDBusMessage> m_ending;
    QVariant m_held; ///< logind's descriptor; closing it ends the request
};

/// What a service is asked, and what ends it again given the reply's first value.
struct Request {
    QDBusMessage message;
    std::function<std::optional<QDBusMessage>(const QVariant& reply)> ending;
};

Request screenSaverRequest(const QString& reason) {
    const auto call = [](const QString& method) {
        return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.ScreenSaver"),
                                              QStringLiteral("/org/freedesktop/ScreenSaver"),
                                              QStringLiteral("org.freedesktop.ScreenSaver"), method);
    };
    auto message = call(QStringLiteral("Inhibit"));
    message << applicationName << reason;
    return {message, [call](const QVariant& cookie) {
                auto ending = call(QStringLiteral("UnInhibit"));
                ending << cookie.toUInt();
                return std::optional(ending);
            }};
}

Request portalRequest(const QString& reason) {
    const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
    auto message = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/portal/desktop"),
                                                  QStringLiteral("org.freedesktop.portal.Inhibit"),
                                                  QStringLiteral("Inhibit"));
    message << QString() << portalIdleFlag << QVariantMap{{QStringLiteral("reason"), reason}};
    return {message, [service](const QVariant& handle) {
                return std::optional(QDBusMessage::createMethodCall(
                    service, handle.value<QDBusObjectPath>().path(),
                    QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Close")));
            }};
}

Request logindRequest(const QString& reason) {
    auto message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    message << QStringLiteral("idle") << applicationName << reason << QStringLiteral("block");
    return {message, [](const QVariant&) { return std::optional<QDBusMessage>(); }};
}

/// A new connection for each service: a request that was given up must not be granted later on.
std::unique_ptr<Grant> ask(QDBusConnection::BusType type, const QString& address, const Request& request) {
    auto connection = std::make_unique<Connection>(type, address);
    if (!connection->isConnected())
        return nullptr;
    const QDBusMessage reply = connection->call(request.message);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return nullptr;
    const QVariant value = reply.arguments().constFirst();
    return std::make_unique<Grant>(std::move(connection), request.ending(value), value);
}

std::unique_ptr<Grant> askEverybody(const DBusPowerManager::Buses& buses, const QString& reason) {
    if (auto grant = ask(QDBusConnection::SessionBus, buses.session, screenSaverRequest(reason)))
        return grant;
    if (auto grant = ask(QDBusConnection::SessionBus, buses.session, portalRequest(reason)))
        return grant;
    return ask(QDBusConnection::SystemBus, buses.system, logindRequest(reason));
}

} // namespace

struct DBusPowerManager::State {
    explicit State(Buses buses_) : buses(std::move(buses_)) {}

    const Buses buses;
    std::mutex mutex;
    std::map<Assertion, std::unique_ptr<Grant>> grants;
    Assertion last = 0;
    std::atomic<bool> ended = false;
};

DBusPowerManager::DBusPowerManager(dispatch::Dispatcher& dispatcher, Buses buses)
    : m_dispatcher(dispatcher), m_state(std::make_shared<State>(std::move(buses))) {}

DBusPowerManager::~DBusPowerManager() {
    const std::scoped_lock lock(m_state->mutex);
    m_state->ended = true;
    m_state->grants.clear();
}

void DBusPowerManager::preventUserIdleDisplaySleep(const QString& reason, CreatedHandler created) {
    auto& queue = m_dispatcher.globalQueue(askingQueue);
    queue.async([state = m_state, &dispatcher = m_dispatcher, reason, created = std::move(created)] {
        auto grant = askEverybody(state->buses, reason);
        std::optional<Assertion> assertion;
        if (const std::scoped_lock lock(state->mutex); grant && !state->ended) {
            assertion = ++state->last;
            state->grants.emplace(*assertion, std::move(grant));
        }
        dispatcher.mainQueue().async([state, created, assertion] {
            if (!state->ended)
                created(assertion);
        });
    });
}

void DBusPowerManager::release(Assertion assertion) {
    auto& queue = m_dispatcher.globalQueue(askingQueue);
    queue.async([state = m_state, assertion] {
        std::unique_ptr<Grant> grant;
        {
            const std::scoped_lock lock(state->mutex);
            if (const auto node = state->grants.extract(assertion))
                grant = std::move(node.mapped());
        }
        if (grant)
            grant->end();
    });
}

} // namespace tarnwick::power
