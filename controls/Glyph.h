#pragma once

#include "assets/PictureItem.h"

#include <QColor>

namespace tarnwick {

/// One of the small signs inside the styled controls.
class Glyph : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Sign sign READ sign WRITE setSign NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)

public:
    enum Sign { Check, UpDown };
    Q_ENUM(Sign)

    explicit Glyph(QQuickItem* parent = nullptr);

    void setSign(Sign sign);
    void setColor(const QColor& color);

    Sign sign() const { return m_sign; }
    const QColor& color() const { return m_color; }

Q_SIGNALS:
    void changed();

protected:
    void updatePolish() override;

private:
    Sign m_sign = Check;
    QColor m_color = Qt::white;
};

} // namespace tarnwick
