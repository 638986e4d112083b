#include "platform/animation/VirtualAnimationDriver.h"

#include <QCoreApplication>

namespace tarnwick::animation {

void VirtualAnimationDriver::step(qint64 milliseconds) {
    QCoreApplication::processEvents();
    m_now += milliseconds;
    advanceAnimation();
    QCoreApplication::processEvents();
}

void VirtualAnimationDriver::start() {
    m_now = 0;
    QAnimationDriver::start();
}

} // namespace tarnwick::animation
