#pragma once

#include "platform/menus/MenuModel.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QVariantMap>

namespace tarnwick::menus {

// The shapes of `com.canonical.dbusmenu` on the bus.

/// An entry with what stands in it.
struct LayoutItem {
    int number = 0;
    QVariantMap properties;
    QList<LayoutItem> children;
};

struct ItemProperties {
    int number = 0;
    QVariantMap properties;
};

struct MenuEvent {
    int number = 0;
    QString kind;
    QDBusVariant data;
    uint timestamp = 0;
};

/// What a panel needs to draw `entry`. `wanted` names what it asks for; empty means all.
QVariantMap propertiesOf(const Entry& entry, const QStringList& wanted);

/// The entry `number` with what stands in it, `depth` levels deep; below 0 means all.
LayoutItem layoutOf(const MenuModel& model, int number, int depth, const QStringList& wanted);

/// Makes the shapes known to QtDBus. May be called again.
void registerMenuTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const LayoutItem& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, LayoutItem& item);
QDBusArgument& operator<<(QDBusArgument& argument, const ItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, ItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

} // namespace tarnwick::menus

Q_DECLARE_METATYPE(tarnwick::menus::LayoutItem)
Q_DECLARE_METATYPE(tarnwick::menus::ItemProperties)
Q_DECLARE_METATYPE(tarnwick::menus::MenuEvent)
