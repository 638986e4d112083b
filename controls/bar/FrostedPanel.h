#pragma once

#include "canvas/PictureItem.h"
#include "controls/bar/Backdrop.h"

#include <QVariantAnimation>

namespace tarnwick {

/// A frosted panel. Made off the main thread whenever what is behind it, its place or its size changes
/// while it is wanted; until then it shows the one before, which then fades.
class FrostedPanel : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::Backdrop backdrop MEMBER m_backdrop NOTIFY changed)
    /// The panel in the backdrop's units.
    Q_PROPERTY(QRectF place MEMBER m_place NOTIFY changed)
    /// Of its corners, in the backdrop's units.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)
    /// Whether it can be seen; else nothing is made.
    Q_PROPERTY(bool isWanted MEMBER m_isWanted NOTIFY isWantedChanged)

public:
    explicit FrostedPanel(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void changed();
    void isWantedChanged();

protected:
    void updatePolish() override;

private:
    void take(const Picture& made);

    PictureItem* const m_before; ///< the picture that fades
    QVariantAnimation m_fade;
    Backdrop m_backdrop;
    QRectF m_place;
    double m_radius = 22;
    bool m_isWanted = true;
    bool m_isOld = true;
    bool m_isMaking = false;
};

} // namespace tarnwick
