#pragma once

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QString>

namespace tarnwick {

/// A playlist on the wire: id, name, icon.
struct WirePlaylist {
    QDBusObjectPath id;
    QString name;
    QString icon;
};

/// The active playlist on the wire.
struct WireActive {
    bool isValid = false;
    WirePlaylist playlist;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const WirePlaylist& playlist) {
    argument.beginStructure();
    argument << playlist.id << playlist.name << playlist.icon;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, WirePlaylist& playlist) {
    argument.beginStructure();
    argument >> playlist.id >> playlist.name >> playlist.icon;
    argument.endStructure();
    return argument;
}

inline QDBusArgument& operator<<(QDBusArgument& argument, const WireActive& active) {
    argument.beginStructure();
    argument << active.isValid << active.playlist;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, WireActive& active) {
    argument.beginStructure();
    argument >> active.isValid >> active.playlist;
    argument.endStructure();
    return argument;
}

/// To be called before either is sent.
inline void registerWirePlaylists() {
    qDBusRegisterMetaType<WirePlaylist>();
    qDBusRegisterMetaType<QList<WirePlaylist>>();
    qDBusRegisterMetaType<WireActive>();
}

} // namespace tarnwick
