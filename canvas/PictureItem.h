#pragma once

#include <QQuickItem>

#include <memory>

namespace tarnwick {

/// A picture made for exactly the device pixels of the item, drawn in every renderer without any further
/// scaling, upright or turned.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    using Picture = std::shared_ptr<const QImage>;

    explicit PictureItem(QQuickItem* parent = nullptr);

    /// The item's size on screen, rounded to whole device pixels.
    QSize deviceSize() const;

    /// What is shown, stretched to the item while it has another size; null for nothing.
    void setPicture(Picture picture);
    const Picture& picture() const { return m_picture; }

Q_SIGNALS:
    /// The size in device pixels may have changed.
    void deviceSizeChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    Picture m_picture;
    bool m_textureIsOld = false;
};

} // namespace tarnwick
