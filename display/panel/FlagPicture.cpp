#include "display/panel/FlagPicture.h"

#include "assets/Catalogue.h"

#include <QPainter>
#include <QPainterPath>

namespace tarnwick {

FlagPicture::FlagPicture(QQuickItem* parent) : PictureItem(parent) {
    connect(this, &PictureItem::deviceSizeChanged, this, [this] { polish(); });
}

void FlagPicture::setName(const QString& name) {
    m_name = name;
    polish();
    Q_EMIT nameChanged();
}

void FlagPicture::setRadius(double radius) {
    m_radius = radius;
    polish();
    Q_EMIT radiusChanged();
}

void FlagPicture::setEdgeWidth(double width) {
    m_edgeWidth = width;
    polish();
    Q_EMIT edgeWidthChanged();
}

void FlagPicture::setEdge(const QColor& edge) {
    m_edge = edge;
    polish();
    Q_EMIT edgeChanged();
}

void FlagPicture::updatePolish() {
    const QSize size(qRound(width()), qRound(height()));
    const auto flag = size.isEmpty() ? nullptr : Catalogue::shared().picture(m_name, size);
    if (!flag) {
        setPicture(nullptr);
        return;
    }
    const auto drawn = std::make_shared<QImage>(size, QImage::Format_ARGB32_Premultiplied);
    drawn->fill(Qt::transparent);
    QPainter painter(drawn.get());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(*flag));
    painter.drawRoundedRect(QRectF(QPointF(), size), m_radius, m_radius);
    const double half = m_edgeWidth / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_edge, m_edgeWidth));
    painter.drawRoundedRect(QRectF(QPointF(), size).adjusted(half, half, -half, -half), m_radius - half,
                            m_radius - half);
    painter.end();
    setPicture(drawn);
}

} // namespace tarnwick
