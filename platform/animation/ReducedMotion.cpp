#include "platform/animation/ReducedMotion.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QMap>

#include <algorithm>

namespace tarnwick::animation {

namespace {

const auto portal = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.Settings");

struct Setting {
    const char* space;
    const char* key;
    bool (*reduces)(const QVariant& value);
};

constexpr std::array<Setting, 3> settings{{
    {"org.freedesktop.appearance", "reduced-motion",
     [](const QVariant& value) { return value.toUInt() == 1; }},
    {"org.gnome.desktop.interface", "enable-animations",
     [](const QVariant& value) { return value.isValid() && !value.toBool(); }},
    // KDE's portal passes its configuration on as texts.
    {"org.kde.kdeglobals.KDE", "AnimationDurationFactor",
     [](const QVariant& value) {
         bool isNumber = false;
         return value.toDouble(&isNumber) == 0 && isNumber;
     }},
}};

} // namespace

ReducedMotion::ReducedMotion(const QDBusConnection& bus) : m_bus(bus) {
    if (!m_bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // a slot's types are looked up by their names
    m_bus.connect(QString(), path, interface, QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto* watcher = new QDBusServiceWatcher(portal, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &ReducedMotion::ask);
    ask();
}

void ReducedMotion::ask() {
    auto call = QDBusMessage::createMethodCall(portal, path, interface, QStringLiteral("ReadAll"));
    QStringList spaces;
    for (const Setting& setting : settings)
        spaces.append(QString::fromLatin1(setting.space));
    call.setArguments({spaces});
    auto* reply = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
        take(*reply);
        reply->deleteLater();
    });
}

void ReducedMotion::take(const QDBusPendingCallWatcher& reply) {
    const QDBusMessage message = reply.reply();
    if (message.type() != QDBusMessage::ReplyMessage || message.signature() != QLatin1String("a{sa{sv}}"))
        return;
    const auto all = qdbus_cast<QMap<QString, QVariantMap>>(message.arguments().constFirst());
    for (auto space = all.begin(); space != all.end(); ++space)
        for (auto entry = space->begin(); entry != space->end(); ++entry)
            set(space.key(), entry.key(), entry.value());
}

void ReducedMotion::settingChanged(const QString& space, const QString& key, const QDBusVariant& value) {
    set(space, key, value.variant());
}

void ReducedMotion::set(const QString& space, const QString& key, const QVariant& value) {
    for (std::size_t i = 0; i < settings.size(); ++i)
        if (space == QLatin1String(settings[i].space) && key == QLatin1String(settings[i].key))
            m_wishes[i] = settings[i].reduces(value);
    const bool isReduced = std::ranges::find(m_wishes, true) != m_wishes.end();
    if (isReduced == m_isReduced)
        return;
    m_isReduced = isReduced;
    Q_EMIT changed(isReduced);
}

} // namespace tarnwick::animation
