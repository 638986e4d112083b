// Changes values in a defaults file as fast as it can, and says of each that it has returned.
// Usage: defaults_writer FILE PREFIX COUNT

#include "platform/defaults/FileDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"

#include <QCoreApplication>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    tarnwick::dispatch::VirtualDispatcher dispatcher;
    tarnwick::defaults::FileDefaults defaults(arguments.value(1), dispatcher, [](const QString& line) {
        std::fprintf(stderr, "%s\n", qPrintable(line));
    });
    for (int i = 0; i < arguments.value(3).toInt(); ++i) {
        const QString key = arguments.value(2) + QString::number(i);
        defaults.set(key, double(i));
        const QByteArray line = key.toUtf8() + '\n';
        if (::write(STDOUT_FILENO, line.constData(), std::size_t(line.size())) < 0)
            return 1;
    }
    return 0;
}
