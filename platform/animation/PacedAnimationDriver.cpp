#include "platform/animation/PacedAnimationDriver.h"

namespace tarnwick::animation {

PacedAnimationDriver::PacedAnimationDriver(std::chrono::milliseconds interval) {
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.setInterval(interval);
    connect(&m_tick, &QTimer::timeout, this, [this] { advanceAnimation(); });
}

void PacedAnimationDriver::start() {
    m_time.start();
    m_tick.start();
    QAnimationDriver::start();
}

void PacedAnimationDriver::stop() {
    m_tick.stop();
    QAnimationDriver::stop();
}

} // namespace tarnwick::animation
