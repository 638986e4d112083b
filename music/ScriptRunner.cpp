#include "music/ScriptRunner.h"

#include <algorithm>

namespace tarnwick {

namespace {

// Texts are composed from titles, levels and names, so the memory of their last lines needs an end.
constexpr qsizetype maximumLastLines = 64;

} // namespace

ScriptRunner::ScriptRunner(dispatch::Dispatcher& dispatcher, Execute execute, LogLine log,
                           std::vector<int> unsaid)
    : m_dispatcher(dispatcher), m_execute(std::move(execute)), m_log(std::move(log)),
      m_unsaid(std::move(unsaid)) {}

std::optional<script::Descriptor> ScriptRunner::runAppleScript(const QString& source) {
    std::optional<script::Descriptor> reply;
    m_dispatcher.runAndWait(dispatch::QualityOfService::UserInteractive,
                            [&] { reply = runAndPrint(source); });
    return reply;
}

std::optional<script::Descriptor> ScriptRunner::runAndPrint(const QString& source) {
    script::Outcome outcome = m_execute(source);
    if (outcome.error && std::find(m_unsaid.begin(), m_unsaid.end(), outcome.error->number) == m_unsaid.end())
        print(source, *outcome.error);
    return std::move(outcome.reply);
}

// A poll that fails fails again and again: its line is news only when it differs from the last one.
void ScriptRunner::print(const QString& source, const script::Error& error) {
    const QString line = QStringLiteral("Errore AppleScript: ") + error.toString();
    {
        const std::lock_guard lock(m_mutex);
        if (m_lastLines.value(source) == line)
            return;
        if (m_lastLines.size() >= maximumLastLines)
            m_lastLines.clear();
        m_lastLines.insert(source, line);
    }
    m_log(line);
}

} // namespace tarnwick
