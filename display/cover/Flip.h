#pragma once

#include <QPointF>
#include <QQuickItem>

namespace tarnwick {

/// A turn about the vertical axis through a point, seen in perspective. Past 90 degrees the item is seen
/// from behind, mirrored.
class Flip : public QQuickTransform {
    Q_OBJECT
    QML_ELEMENT
    /// Degrees.
    Q_PROPERTY(double angle READ angle WRITE setAngle NOTIFY angleChanged)
    Q_PROPERTY(QPointF origin READ origin WRITE setOrigin NOTIFY originChanged)
    /// How far the eye is from the item, in the item's units; more than half its width.
    Q_PROPERTY(double distance READ distance WRITE setDistance NOTIFY distanceChanged)

public:
    using QQuickTransform::QQuickTransform;

    void applyTo(QMatrix4x4* matrix) const override;

    void setAngle(double angle);
    void setOrigin(const QPointF& origin);
    void setDistance(double distance);

    double angle() const { return m_angle; }
    QPointF origin() const { return m_origin; }
    double distance() const { return m_distance; }

Q_SIGNALS:
    void angleChanged();
    void originChanged();
    void distanceChanged();

private:
    double m_angle = 0;
    QPointF m_origin;
    double m_distance = 1000;
};

} // namespace tarnwick
