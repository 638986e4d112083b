#include "app/desktop/ScreenProbe.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace tarnwick {

namespace {

bool reachesX11() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool reached = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return reached;
}

bool reachesWayland(QString name) {
    if (!name.startsWith(u'/'))
        name = qEnvironmentVariable("XDG_RUNTIME_DIR") + u'/' + name;
    const QByteArray path = QFile::encodeName(name);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= qsizetype(sizeof address.sun_path))
        return false;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool reached =
        descriptor >= 0 && connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    if (descriptor >= 0)
        close(descriptor);
    return reached;
}

bool speaksWayland() {
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
    return !plugins.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

} // namespace

QString screenFault() {
    // Whoever names a platform gets it, and what it needs is known to it alone.
    if (const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
        !platform.isEmpty() && !platform.startsWith(QLatin1String("xcb")) &&
        !platform.startsWith(QLatin1String("wayland")))
        return {};
    const QString x11 = qEnvironmentVariable("DISPLAY");
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (x11.isEmpty() && wayland.isEmpty())
        return QStringLiteral("there is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set "
                              "(tarnwick status and tarnwick snapshot need none)");
    if (!wayland.isEmpty() && reachesWayland(wayland)) {
        if (!x11.isEmpty() || speaksWayland())
            return {};
        return QStringLiteral("the screen speaks Wayland alone, and Qt's plugin for it (qt6-wayland) is not "
                              "installed");
    }
    if (!x11.isEmpty() && reachesX11())
        return {};
    return QStringLiteral("the screen '%1' cannot be reached").arg(x11.isEmpty() ? wayland : x11);
}

} // namespace tarnwick
