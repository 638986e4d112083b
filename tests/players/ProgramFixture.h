#pragma once

#include "tests/fakes/Files.h"
#include "tests/fakes/PrivateBus.h"

#include <QProcessEnvironment>
#include <gmock/gmock.h>

namespace tarnwick {

/// The program in a home of its own, without a screen.
class ProgramFixture : public testing::Test {
protected:
    struct Result {
        int code = -1; ///< -1 when the program crashed or did not end
        QString out;
        std::string err;
    };

    ProgramFixture() {
        for (const char* name :
             {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "HOME"})
            environment.insert(name, home.path());
        environment.remove("DBUS_SESSION_BUS_ADDRESS");
        environment.remove("DISPLAY");
    }

    Result run(const QStringList& arguments, const QByteArray& input = {}) const {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(TARNWICK_PROGRAM, arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60'000))
            process.kill();
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                process.readAllStandardError().toStdString()};
    }

    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

} // namespace tarnwick
