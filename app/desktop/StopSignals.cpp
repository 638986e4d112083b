#include "app/desktop/StopSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace tarnwick {

namespace {

constexpr std::array stopping{SIGTERM, SIGINT, SIGHUP};

// A handler may do little more than write, and it can be given nothing.
std::array<int, 2> pipeEnds{-1, -1};

void handle(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

void setHandler(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : stopping)
        sigaction(signal, &action, nullptr);
}

} // namespace

StopSignals::StopSignals(std::function<void()> stop) {
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [stop = std::move(stop)] {
        char byte = 0;
        if (read(pipeEnds[0], &byte, 1) == 1)
            stop();
    });
    setHandler(handle);
}

StopSignals::~StopSignals() {
    if (!m_notifier)
        return;
    setHandler(SIG_DFL);
    m_notifier.reset();
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}

} // namespace tarnwick
