#pragma once

#include "platform/launchctl/Launchctl.h"

#include <QStringList>

namespace tarnwick {

/// Takes note of what it is asked, and does nothing.
class FakeLaunchctl : public launchctl::Launchctl {
public:
    QString run(const QStringList& arguments) override {
        commands.append(arguments.first());
        calls.append(arguments.join(u' '));
        return error;
    }
    bool isRegistered(const QString&) const override { return registered; }
    void forget(const QString& file) override { calls.append(QStringLiteral("forget ") + file); }

    QStringList commands; ///< without their arguments
    QStringList calls;
    bool registered = true;
    QString error; ///< what every command says; empty when it succeeds
};

} // namespace tarnwick
