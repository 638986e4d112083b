// Keeps the display awake until it is killed. Usage: power_holder SESSION_BUS SYSTEM_BUS [X_SERVER]

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/power/DBusPowerManager.h"
#include "settings/ScreenSaverManager.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    tarnwick::dispatch::SystemDispatcher dispatcher;
    tarnwick::power::DBusPowerManager power(dispatcher,
                                            {arguments.value(1), arguments.value(2), arguments.value(3)});
    tarnwick::ScreenSaverManager manager(&power);
    manager.preventSleep();
    return QCoreApplication::exec();
}
