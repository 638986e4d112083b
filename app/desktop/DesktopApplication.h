#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace tarnwick {

/// The program as the desktop knows it: a name on the session bus that can be asked to show itself.
class DesktopApplication : public QObject {
    Q_OBJECT

public:
    /// What came of asking a running copy to show itself.
    enum class Answer { Shown, NobodyRuns, NoAnswer };

    /// Asks the copy that has the name on `bus`. Blocks for two seconds at most.
    static Answer askToShow(QDBusConnection bus);

    /// Asks `bus` for the name; with several copies the first one has it, and the next gets it after that.
    /// `player` tells the unique name of the player that is shown, empty when there is none.
    DesktopApplication(const QDBusConnection& bus, std::function<QString()> player);
    ~DesktopApplication() override;

    /// Whether this copy is the one that would be asked.
    bool hasName() const { return m_hasName; }

    QString player() const { return m_player(); }

Q_SIGNALS:
    /// Somebody wants to see the window.
    void activated();

private Q_SLOTS:
    void nameAcquired(const QString& name);
    void nameLost(const QString& name);

private:
    QDBusConnection m_bus;
    const std::function<QString()> m_player;
    bool m_hasName = false;
};

/// The interface as the bus sees it. The names are the protocol's.
class DesktopApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit DesktopApplicationAdaptor(DesktopApplication* parent);

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& addresses, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    DesktopApplication& m_application;
};

/// What the commands ask a display. The names are our own protocol's.
class DisplayAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.tarnwick.Tarnwick")
    Q_PROPERTY(QString Player READ player)

public:
    explicit DisplayAdaptor(DesktopApplication* parent)
        : QDBusAbstractAdaptor(parent), m_application(*parent) {}

    /// The unique bus name of the player that is shown; empty when there is none.
    QString player() const { return m_application.player(); }

private:
    DesktopApplication& m_application;
};

} // namespace tarnwick
