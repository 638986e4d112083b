#pragma once

#include "platform/menus/MenuExport.h"

#include <QDBusServiceWatcher>
#include <QWindow>

namespace tarnwick::menus {

/// The menus of a window in the desktop's menu bar, where it has one that takes them over the bus.
class GlobalMenu : public QObject {
    Q_OBJECT

public:
    /// `model` must outlive this object, and `window` the program's event loop. Returns at once.
    GlobalMenu(MenuModel& model, QWindow& window, const QDBusConnection& bus);

private:
    void give();

    QDBusConnection m_bus;
    QWindow& m_window;
    MenuExport m_export;
    QDBusServiceWatcher m_watcher;
};

} // namespace tarnwick::menus
