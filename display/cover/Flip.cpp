#include "display/cover/Flip.h"

#include <QMatrix4x4>
#include <QtMath>

namespace tarnwick {

void Flip::applyTo(QMatrix4x4* matrix) const {
    const double turn = qDegreesToRadians(m_angle);
    QMatrix4x4 turned;
    turned(0, 0) = static_cast<float>(std::cos(turn));
    turned(3, 0) = static_cast<float>(-std::sin(turn) / m_distance);
    matrix->translate(static_cast<float>(m_origin.x()), static_cast<float>(m_origin.y()));
    *matrix *= turned;
    matrix->translate(static_cast<float>(-m_origin.x()), static_cast<float>(-m_origin.y()));
}

void Flip::setAngle(double angle) {
    if (m_angle == angle)
        return;
    m_angle = angle;
    update();
    Q_EMIT angleChanged();
}

void Flip::setOrigin(const QPointF& origin) {
    if (m_origin == origin)
        return;
    m_origin = origin;
    update();
    Q_EMIT originChanged();
}

void Flip::setDistance(double distance) {
    if (m_distance == distance || distance <= 0)
        return;
    m_distance = distance;
    update();
    Q_EMIT distanceChanged();
}

} // namespace tarnwick
