#pragma once

#include <QAnimationDriver>
#include <QVariantAnimation>

namespace tarnwick::animation {

/// Lets Qt's animations, and the timers of QML, run by a time that only `step` moves. Make one before
/// anything is animated; from then on it drives everything on this thread.
class VirtualAnimationDriver : public QAnimationDriver {
public:
    VirtualAnimationDriver();

    /// Moves the time on. What is queued runs first, so that an animation that was started before the
    /// step has the whole of it.
    void step(qint64 milliseconds);

    qint64 elapsed() const override { return m_now; }

private:
    qint64 m_now = 0;
    QVariantAnimation m_keepsRunning; // else Qt counts real time while nothing is animated
};

} // namespace tarnwick::animation
