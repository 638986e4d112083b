#pragma once

#include "assets/PictureItem.h"
#include "controls/Backdrop.h"

namespace tarnwick {

/// A frosted panel. Made off the main thread whenever what is behind it, its place or its size changes
/// while it is wanted; until then it shows the one before.
class FrostedPanel : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::Backdrop backdrop READ backdrop WRITE setBackdrop NOTIFY backdropChanged)
    /// The panel in the backdrop's units.
    Q_PROPERTY(QRectF place READ place WRITE setPlace NOTIFY placeChanged)
    /// Of its corners, in the backdrop's units.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// Whether it can be seen; else nothing is made.
    Q_PROPERTY(bool isWanted READ isWanted WRITE setIsWanted NOTIFY isWantedChanged)

public:
    explicit FrostedPanel(QQuickItem* parent = nullptr);

    void setBackdrop(const Backdrop& backdrop);
    void setPlace(const QRectF& place);
    void setRadius(double radius);
    void setIsWanted(bool isWanted);

    const Backdrop& backdrop() const { return m_backdrop; }
    const QRectF& place() const { return m_place; }
    double radius() const { return m_radius; }
    bool isWanted() const { return m_isWanted; }

Q_SIGNALS:
    void backdropChanged();
    void placeChanged();
    void radiusChanged();
    void isWantedChanged();

protected:
    void updatePolish() override;

private:
    Backdrop m_backdrop;
    QRectF m_place;
    double m_radius = 22;
    bool m_isWanted = true;
    bool m_isOld = true;
    bool m_isMaking = false;
};

} // namespace tarnwick
