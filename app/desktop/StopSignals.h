#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tarnwick {

/// Turns the signals by which a session or a terminal ends a program into a call on the main thread. SIGHUP
/// stays ignored where it was, as under nohup. One at a time.
class StopSignals {
public:
    /// `stop` is called once for each signal.
    explicit StopSignals(std::function<void()> stop);
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    ~StopSignals();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tarnwick
