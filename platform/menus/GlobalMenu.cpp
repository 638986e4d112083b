#include "platform/menus/GlobalMenu.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QGuiApplication>

namespace tarnwick::menus {

namespace {

const auto registrar = QStringLiteral("com.canonical.AppMenu.Registrar");
const auto menuPath = QStringLiteral("/MenuBar");

} // namespace

GlobalMenu::GlobalMenu(MenuModel& model, QWindow& window, const QDBusConnection& bus)
    : m_bus(bus), m_window(window), m_export(model, bus, menuPath),
      m_watcher(registrar, bus, QDBusServiceWatcher::WatchForRegistration) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &GlobalMenu::give);
    // A window has a new number each time the desktop takes it in.
    connect(&window, &QWindow::visibleChanged, this, [this](bool visible) {
        if (visible)
            give();
    });
    if (window.isVisible())
        give();
}

void GlobalMenu::give() {
    // Elsewhere windows have no number that the menu bar knows.
    if (QGuiApplication::platformName() != QLatin1String("xcb") || !m_window.handle())
        return;
    auto call = QDBusMessage::createMethodCall(registrar, QStringLiteral("/com/canonical/AppMenu/Registrar"),
                                               registrar, QStringLiteral("RegisterWindow"));
    call.setAutoStartService(false);
    call.setArguments({uint(m_window.winId()), QVariant::fromValue(QDBusObjectPath(menuPath))});
    m_bus.asyncCall(call);
}

} // namespace tarnwick::menus
