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

std::array<struct sigaction, stopping.size()> before{};

/// Who started the program with SIGHUP ignored wants it to go on after the terminal.
bool stays(int signal, const struct sigaction& action) {
    return signal == SIGHUP && action.sa_handler == SIG_IGN;
}

void setHandlers() {
    struct sigaction action = {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < stopping.size(); ++i) {
        sigaction(stopping[i], nullptr, &before[i]);
        if (!stays(stopping[i], before[i]))
            sigaction(stopping[i], &action, nullptr);
    }
}

void restoreHandlers() {
    for (std::size_t i = 0; i < stopping.size(); ++i)
        sigaction(stopping[i], &before[i], nullptr);
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
    setHandlers();
}

StopSignals::~StopSignals() {
    if (!m_notifier)
        return;
    restoreHandlers();
    m_notifier.reset();
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}

} // namespace tarnwick
