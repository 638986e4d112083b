#pragma once

#include "platform/power/PowerManager.h"

namespace tarnwick {

/// Counts what is held; answers at once.
class CountingPower : public power::PowerManager {
public:
    void preventUserIdleDisplaySleep(const QString& why, CreatedHandler created) override {
        reason = why;
        ++held;
        created(++m_last);
    }
    void release(Assertion) override { --held; }

    int held = 0;
    QString reason;

private:
    Assertion m_last = 0;
};

} // namespace tarnwick
