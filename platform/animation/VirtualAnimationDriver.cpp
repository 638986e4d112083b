#include "platform/animation/VirtualAnimationDriver.h"

#include <QCoreApplication>

namespace tarnwick::animation {

void VirtualAnimationDriver::step(qint64 milliseconds) {
    QCoreApplication::processEvents();
    m_now += milliseconds;
    advanceAnimation();
    QCoreApplication::processEvents();
}

} // namespace tarnwick::animation
