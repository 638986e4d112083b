#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "script/run/Interpreter.h"

#include <QHash>
#include <QString>

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace tarnwick {

/// Takes one line of the log, without its end. Any thread may call it.
using LogLine = std::function<void(const QString&)>;

/// Sends script texts to Music. Any thread may call it.
class ScriptRunner {
public:
    /// Compiles and runs a text on the calling thread.
    using Execute = std::function<script::Outcome(const QString& source)>;

    /// Errors whose numbers stand in `unsaid` are not printed.
    ScriptRunner(dispatch::Dispatcher& dispatcher, Execute execute, LogLine log,
                 std::vector<int> unsaid = {});

    /// Runs the text on the user-interactive queue and waits, without a time-out, until it has ended; so
    /// it must not be called on that queue. The reply, or none after an error, which is printed.
    std::optional<script::Descriptor> runAppleScript(const QString& source);

    /// Runs the text on the calling thread and prints nothing.
    script::Outcome runDirectly(const QString& source) const { return m_execute(source); }

    /// Runs the text on the calling thread and prints its error.
    std::optional<script::Descriptor> runAndPrint(const QString& source);

private:
    void print(const QString& source, const script::Error& error);

    dispatch::Dispatcher& m_dispatcher;
    Execute m_execute;
    LogLine m_log;
    const std::vector<int> m_unsaid;
    std::mutex m_mutex;
    QHash<QString, QString> m_lastLines;
};

} // namespace tarnwick
