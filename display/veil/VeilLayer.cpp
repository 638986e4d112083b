#include "display/veil/VeilLayer.h"

namespace tarnwick {

VeilLayer::VeilLayer(QQuickItem* parent) : PictureItem(parent) { followParent(); }

void VeilLayer::setVeil(const VeilPicture& veil) {
    if (m_veil == veil)
        return;
    m_veil = veil;
    setPicture(veil.picture.isNull() ? nullptr : std::make_shared<const QImage>(veil.picture));
    layOut();
    Q_EMIT veilChanged();
}

void VeilLayer::itemChange(ItemChange change, const ItemChangeData& data) {
    PictureItem::itemChange(change, data);
    if (change == ItemParentHasChanged)
        followParent();
}

void VeilLayer::followParent() {
    if (QQuickItem* surface = parentItem()) {
        connect(surface, &QQuickItem::widthChanged, this, &VeilLayer::layOut, Qt::UniqueConnection);
        connect(surface, &QQuickItem::heightChanged, this, &VeilLayer::layOut, Qt::UniqueConnection);
        layOut();
    }
}

void VeilLayer::layOut() {
    if (!parentItem())
        return;
    const QSizeF surface = parentItem()->size();
    const QRectF& place = m_veil.place;
    setPosition({place.x() * surface.width(), place.y() * surface.height()});
    setSize({place.width() * surface.width(), place.height() * surface.height()});
}

} // namespace tarnwick
