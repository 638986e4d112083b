#include "platform/animation/Transaction.h"

#include <QPointF>

#include <utility>

namespace tarnwick::animation {

QEasingCurve Transaction::easeInOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return curve;
}

void Transaction::animate(std::chrono::milliseconds duration, const Assignment& assign) {
    run(duration, assign);
}

void Transaction::withoutAnimation(const Assignment& assign) {
    run(std::chrono::milliseconds::zero(), assign);
}

void Transaction::run(std::chrono::milliseconds duration, const Assignment& assign) {
    const auto outer = std::exchange(m_duration, duration);
    Q_EMIT changed();
    assign();
    m_duration = outer;
    Q_EMIT changed();
}

} // namespace tarnwick::animation
