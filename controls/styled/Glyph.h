#pragma once

#include "canvas/PictureItem.h"

#include <QColor>

namespace tarnwick {

/// One of the small signs inside the styled controls.
class Glyph : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Sign sign MEMBER m_sign NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    enum Sign { Check, UpDown };
    Q_ENUM(Sign)

    explicit Glyph(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void updatePolish() override;

private:
    Sign m_sign = Check;
    QColor m_color = Qt::white;
};

} // namespace tarnwick
