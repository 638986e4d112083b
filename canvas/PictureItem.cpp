#include "canvas/PictureItem.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace tarnwick {

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemHasContents); }

QSize PictureItem::deviceSize() const {
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    return {qRound(width() * ratio), qRound(height() * ratio)};
}

void PictureItem::setPicture(Picture picture) {
    if (m_picture == picture)
        return;
    m_picture = std::move(picture);
    m_textureIsOld = true;
    update();
}

QSGNode* PictureItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) {
    auto* node = static_cast<QSGImageNode*>(old);
    if (!m_picture || size().isEmpty()) {
        delete node;
        m_textureIsOld = true;
        return nullptr;
    }
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        m_textureIsOld = true;
    }
    if (m_textureIsOld) {
        node->setTexture(window()->createTextureFromImage(*m_picture, QQuickWindow::TextureHasAlphaChannel));
        m_textureIsOld = false;
    }
    node->setRect(boundingRect());
    return node;
}

void PictureItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        update();
        Q_EMIT deviceSizeChanged();
    }
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        Q_EMIT deviceSizeChanged();
}

} // namespace tarnwick
