#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

#include <array>

namespace tarnwick::animation {

/// Whether the user wants less to move, as the desktop's portal tells: by the setting that all desktops
/// share, by GNOME's, or by KDE's. Asks without waiting for an answer, and follows every change. Main
/// thread only.
class ReducedMotion : public QObject {
    Q_OBJECT

public:
    /// Without a connected `bus`, or without a portal, nothing is reduced.
    explicit ReducedMotion(const QDBusConnection& bus);

    bool isReduced() const { return m_isReduced; }

Q_SIGNALS:
    void changed(bool isReduced);

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void ask();
    void take(const QDBusPendingCallWatcher& reply);
    void set(const QString& space, const QString& key, const QVariant& value);

    QDBusConnection m_bus;
    std::array<bool, 3> m_wishes{}; ///< of each of the three settings
    bool m_isReduced = false;
};

} // namespace tarnwick::animation
