#pragma once

#include <QAnimationDriver>
#include <QElapsedTimer>
#include <QTimer>

#include <chrono>

namespace tarnwick::animation {

/// Holds all of Qt's animations to a rate, for where the processor draws each frame. Nothing wakes while
/// nothing is animated. Install it before the first window is shown.
class PacedAnimationDriver : public QAnimationDriver {
    Q_OBJECT

public:
    /// About 30 frames a second.
    static constexpr std::chrono::milliseconds defaultInterval{33};

    explicit PacedAnimationDriver(std::chrono::milliseconds interval = defaultInterval);

    qint64 elapsed() const override { return m_time.isValid() ? m_time.elapsed() : 0; }

protected:
    void start() override;
    void stop() override;

private:
    QElapsedTimer m_time; // since the driver was started
    QTimer m_tick;
};

} // namespace tarnwick::animation
