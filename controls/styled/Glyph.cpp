#include "controls/styled/Glyph.h"

#include <QPainter>

namespace tarnwick {

Glyph::Glyph(QQuickItem* parent) : PictureItem(parent) {
    connect(this, &PictureItem::deviceSizeChanged, this, [this] { polish(); });
    connect(this, &Glyph::changed, this, [this] { polish(); });
}

void Glyph::updatePolish() {
    if (deviceSize().isEmpty())
        return;
    auto picture = std::make_shared<QImage>(deviceSize(), QImage::Format_ARGB32_Premultiplied);
    picture->fill(Qt::transparent);
    QPainter painter(picture.get());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(picture->width() / 14.0, picture->height() / 14.0);
    painter.setPen(QPen(m_color, m_sign == Check ? 1.8 : 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (m_sign == Check) {
        painter.drawPolyline(QPolygonF({{3.6, 7.3}, {6.0, 9.8}, {10.5, 4.3}}));
    } else {
        painter.drawPolyline(QPolygonF({{4.4, 5.4}, {7, 2.8}, {9.6, 5.4}}));
        painter.drawPolyline(QPolygonF({{4.4, 8.6}, {7, 11.2}, {9.6, 8.6}}));
    }
    painter.end();
    setPicture(std::move(picture));
}

} // namespace tarnwick
