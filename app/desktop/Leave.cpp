#include "app/desktop/Leave.h"

#include <unistd.h>

#include <thread>

namespace tarnwick {

void leaveWithin(std::chrono::milliseconds patience, int code) {
    std::thread([patience, code] {
        std::this_thread::sleep_for(patience);
        _exit(code);
    }).detach();
}

} // namespace tarnwick
