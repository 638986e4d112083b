#pragma once

#include "canvas/PictureItem.h"
#include "display/veil/Veils.h"

namespace tarnwick {

/// Draws one veil where it belongs on its surface, which is the parent item.
class VeilLayer : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::VeilPicture veil READ veil WRITE setVeil NOTIFY veilChanged)
    /// The largest alpha in the veil, 0 to 1.
    Q_PROPERTY(double strongest READ strongest NOTIFY veilChanged)

public:
    explicit VeilLayer(QQuickItem* parent = nullptr);

    void setVeil(const VeilPicture& veil);
    const VeilPicture& veil() const { return m_veil; }
    double strongest() const { return m_veil.strongest; }

Q_SIGNALS:
    void veilChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void followParent();
    void layOut();

    VeilPicture m_veil;
};

} // namespace tarnwick
