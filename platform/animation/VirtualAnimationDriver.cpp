#include "platform/animation/VirtualAnimationDriver.h"

#include <QCoreApplication>

#include <limits>

namespace tarnwick::animation {

VirtualAnimationDriver::VirtualAnimationDriver() {
    install();
    m_keepsRunning.setDuration(std::numeric_limits<int>::max());
    m_keepsRunning.setLoopCount(-1);
    m_keepsRunning.start();
}

void VirtualAnimationDriver::step(qint64 milliseconds) {
    QCoreApplication::processEvents();
    m_now += milliseconds;
    advanceAnimation();
    QCoreApplication::processEvents();
}

} // namespace tarnwick::animation
