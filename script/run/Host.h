#pragma once

#include <QRandomGenerator>
#include <QString>

#include <chrono>

namespace tarnwick::script {

/// Where a script's output goes and who makes it wait. Used on the thread of the run.
class Host {
public:
    Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    virtual ~Host() = default;

    /// `log`: a text as it stands, another value as a script writes it.
    virtual void log(const QString& text) = 0;
    /// `display dialog`: returns at once or when the dialog was answered; the script takes it for "OK".
    virtual void displayDialog(const QString& text) = 0;
    /// `delay`: returns when the time has passed.
    virtual void delay(std::chrono::nanoseconds duration) = 0;
    /// `some item`: a number from 0 to `bound` - 1, each as likely. The default takes the system's random
    /// source.
    virtual quint32 random(quint32 bound) { return QRandomGenerator::global()->bounded(bound); }
};

} // namespace tarnwick::script
