#include "canvas/Plate.h"

#include "canvas/ContinuousCorners.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

namespace tarnwick {

Plate::Plate(QQuickItem* parent) : PictureItem(parent) {
    connect(this, &PictureItem::deviceSizeChanged, this, &QQuickItem::polish);
    connect(this, &Plate::lookChanged, this, &QQuickItem::polish);
}

void Plate::updatePolish() {
    const QSize size = deviceSize();
    if (size.isEmpty() || (m_color.alpha() == 0 && (m_borderWidth <= 0 || m_borderColor.alpha() == 0))) {
        setPicture(nullptr);
        return;
    }
    const double ratio = size.width() / width();
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF whole(QPoint(), size);
    QPainterPath inside = continuousRectangle(whole, m_radius * ratio);
    if (m_borderWidth > 0) {
        const double border = std::max(1, qRound(m_borderWidth * ratio));
        const QPainterPath outside = inside;
        inside = continuousRectangle(whole.adjusted(border, border, -border, -border),
                                     std::max(0.0, m_radius * ratio - border));
        painter.fillPath(outside.subtracted(inside), m_borderColor);
    }
    painter.fillPath(inside, m_color);
    painter.end();
    setPicture(std::make_shared<const QImage>(std::move(picture)));
}

/// On whole device pixels, wherever its parents have put it.
QSGNode* Plate::updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) {
    QSGNode* node = PictureItem::updatePaintNode(old, data);
    if (node) {
        const double ratio = window()->effectiveDevicePixelRatio();
        const QPointF corner = mapToScene({}) * ratio;
        const QPointF off = (QPointF(corner.toPoint()) - corner) / ratio;
        static_cast<QSGImageNode*>(node)->setRect(boundingRect().translated(off));
    }
    return node;
}

} // namespace tarnwick
