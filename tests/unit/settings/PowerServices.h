#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QMap>
#include <QSocketNotifier>
#include <QVariantMap>
#include <unistd.h>

#include <memory>

namespace tarnwick::power {

/// Who keeps the display awake, and why. Like the real services it forgets who leaves the bus.
class Inhibitions : public QObject {
public:
    explicit Inhibitions(const QDBusConnection& bus) {
        m_watcher.setConnection(bus);
        m_watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
        connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& owner) {
            m_all.removeIf([&](auto it) { return it->owner == owner; });
        });
    }

    uint add(const QString& owner, const QString& reason) {
        m_watcher.addWatchedService(owner);
        m_all.insert(++m_last, {owner, reason});
        return m_last;
    }
    void remove(uint cookie) { m_all.remove(cookie); }

    qsizetype count() const { return m_all.size(); }
    QString firstReason() const { return m_all.isEmpty() ? QString() : m_all.first().reason; }

private:
    struct One {
        QString owner;
        QString reason;
    };

    QDBusServiceWatcher m_watcher;
    QMap<uint, One> m_all;
    uint m_last = 40;
};

/// An object that a bus knows by a name as long as it lives.
class StandIn : public QObject, protected QDBusContext {
    Q_OBJECT

protected:
    StandIn(const QDBusConnection& bus, const QString& name, const QString& path)
        : m_bus(bus), m_name(name), m_path(path) {
        m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
        m_bus.registerService(name);
    }
    ~StandIn() override {
        m_bus.unregisterService(m_name);
        m_bus.unregisterObject(m_path);
    }

    QDBusConnection m_bus;

private:
    const QString m_name;
    const QString m_path;
};

/// Stands in for the screen saver.
class ScreenSaverService : public StandIn {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    enum class Manner { Grants, Refuses, Hangs };

    explicit ScreenSaverService(const QDBusConnection& bus, Manner manner = Manner::Grants)
        : StandIn(bus, "org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver"), inhibitions(bus),
          m_manner(manner) {}

    void setManner(Manner manner) { m_manner = manner; }

    Inhibitions inhibitions;

public Q_SLOTS:
    uint Inhibit(const QString& application, const QString& reason) {
        Q_UNUSED(application)
        if (m_manner == Manner::Refuses) {
            sendErrorReply(QDBusError::Failed);
            return 0;
        }
        if (m_manner == Manner::Hangs)
            setDelayedReply(true);
        return inhibitions.add(message().service(), reason);
    }
    void UnInhibit(uint cookie) { inhibitions.remove(cookie); }

private:
    Manner m_manner;
};

/// Stands in for a request of the portal.
class PortalRequest : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")

public:
    PortalRequest(Inhibitions& inhibitions, uint cookie) : m_inhibitions(inhibitions), m_cookie(cookie) {}

public Q_SLOTS:
    void Close() { m_inhibitions.remove(m_cookie); }

private:
    Inhibitions& m_inhibitions;
    const uint m_cookie;
};

/// Stands in for the portal; knows only the idle flag.
class PortalService : public StandIn {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Inhibit")

public:
    explicit PortalService(const QDBusConnection& bus)
        : StandIn(bus, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"),
          inhibitions(bus) {}

    Inhibitions inhibitions;

public Q_SLOTS:
    QDBusObjectPath Inhibit(const QString& window, uint flags, const QVariantMap& options) {
        Q_UNUSED(window)
        const uint cookie =
            inhibitions.add(message().service(), flags == 8 ? options["reason"].toString() : "not idle");
        const auto path = QStringLiteral("/org/freedesktop/portal/desktop/request/%1").arg(cookie);
        m_requests.push_back(std::make_unique<PortalRequest>(inhibitions, cookie));
        m_bus.registerObject(path, m_requests.back().get(), QDBusConnection::ExportAllSlots);
        return QDBusObjectPath(path);
    }

private:
    std::vector<std::unique_ptr<PortalRequest>> m_requests;
};

/// Stands in for logind: an inhibition ends when the last copy of its descriptor is closed.
class LogindService : public StandIn {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    explicit LogindService(const QDBusConnection& bus)
        : StandIn(bus, "org.freedesktop.login1", "/org/freedesktop/login1") {}

    QString reason;
    int count = 0;

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString&, const QString& why,
                                    const QString& mode) {
        reason = what == "idle" && mode == "block" ? why : what + mode;
        int ends[2] = {-1, -1};
        if (::pipe(ends) != 0)
            return {};
        ++count;
        auto* end = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
        connect(end, &QSocketNotifier::activated, this, [this, end] {
            end->setEnabled(false);
            ::close(int(end->socket()));
            --count;
        });
        QDBusUnixFileDescriptor descriptor;
        descriptor.giveFileDescriptor(ends[1]);
        return descriptor;
    }
};

} // namespace tarnwick::power
