#pragma once

#include <QEasingCurve>
#include <QObject>

#include <chrono>
#include <functional>

namespace tarnwick::animation {

/// How the changes that are made right now are to reach the screen: at once, or inside an animation.
///
/// The code that decides opens it around an assignment; the `Behavior`s of a view read it. An animation
/// that has begun keeps what it began with. Everything must change synchronously inside, nothing queued.
/// Main thread only.
class Transaction : public QObject {
    Q_OBJECT
    /// Whether changes are animated now.
    Q_PROPERTY(bool active READ isActive NOTIFY changed)
    /// Milliseconds; 0 when not active.
    Q_PROPERTY(int duration READ duration NOTIFY changed)
    Q_PROPERTY(QEasingCurve easing READ easing NOTIFY changed)

public:
    using Assignment = std::function<void()>;

    /// What an animation without a duration of its own takes.
    static constexpr std::chrono::milliseconds defaultDuration{350};

    /// Slow, fast, slow.
    static QEasingCurve easeInOut();

    using QObject::QObject;

    /// Runs `assign` inside an ease-in-out animation. Transactions nest; the innermost one holds.
    void animate(std::chrono::milliseconds duration, const Assignment& assign);

    /// Runs `assign` inside the default animation.
    void animate(const Assignment& assign) { animate(defaultDuration, assign); }

    /// Runs `assign` with animations disabled.
    void withoutAnimation(const Assignment& assign);

    bool isActive() const { return m_duration.count() > 0; }
    int duration() const { return static_cast<int>(m_duration.count()); }
    QEasingCurve easing() const { return easeInOut(); }

Q_SIGNALS:
    void changed();

private:
    void run(std::chrono::milliseconds duration, const Assignment& assign);

    std::chrono::milliseconds m_duration{0};
};

} // namespace tarnwick::animation
