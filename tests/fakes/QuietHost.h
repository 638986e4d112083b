#pragma once

#include "script/run/Host.h"

#include <vector>

namespace tarnwick::fakes {

/// Shows nothing and waits for nothing, but takes note of how long it should have waited.
class QuietHost final : public script::Host {
public:
    void log(const QString&) override {}
    void displayDialog(const QString&) override {}
    void delay(std::chrono::nanoseconds duration) override { delays.push_back(duration); }
    quint32 random(quint32) override { return 0; }

    std::vector<std::chrono::nanoseconds> delays;
};

} // namespace tarnwick::fakes
