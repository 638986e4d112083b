#pragma once

#include "canvas/PictureItem.h"

#include <QColor>

namespace tarnwick {

/// A plate with continuous corners, painted by the processor at device pixels, so that its corners and its
/// border are whole in every renderer and at every scale, also while it is enlarged.
class Plate : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    /// Of the corners, in logical pixels.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY lookChanged)
    /// In logical pixels; shown as whole device pixels. 0 for no border.
    Q_PROPERTY(double borderWidth MEMBER m_borderWidth NOTIFY lookChanged)

public:
    explicit Plate(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void lookChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void updatePolish() override;

private:
    QColor m_color = Qt::transparent;
    double m_radius = 0;
    QColor m_borderColor = Qt::transparent;
    double m_borderWidth = 0;
};

} // namespace tarnwick
