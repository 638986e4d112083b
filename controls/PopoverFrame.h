#pragma once

#include "assets/PictureItem.h"
#include "controls/PopoverPainter.h"

namespace tarnwick {

/// The playlist popover behind its texts, with `margin` points around it for shadow and arrow.
class PopoverFrame : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::options::PlaylistBackgroundOption look READ look WRITE setLook NOTIFY lookChanged)
    Q_PROPERTY(QList<QColor> gradientColors READ gradientColors WRITE setGradientColors NOTIFY lookChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY lookChanged)
    Q_PROPERTY(bool hasArrow READ hasArrow WRITE setHasArrow NOTIFY lookChanged)
    /// Logical pixels of a point.
    Q_PROPERTY(double point READ point WRITE setPoint NOTIFY lookChanged)
    /// In points.
    Q_PROPERTY(double margin READ margin CONSTANT)

public:
    explicit PopoverFrame(QQuickItem* parent = nullptr);

    void setLook(PlaylistBackgroundOption look) { assign(m_look.option, look); }
    void setGradientColors(const QList<QColor>& colors) { assign(m_look.gradientColors, colors); }
    void setTextColor(const QColor& color) { assign(m_look.textColor, color); }
    void setHasArrow(bool hasArrow) { assign(m_look.hasArrow, hasArrow); }
    void setPoint(double point) { assign(m_point, point); }

    PlaylistBackgroundOption look() const { return m_look.option; }
    const QList<QColor>& gradientColors() const { return m_look.gradientColors; }
    const QColor& textColor() const { return m_look.textColor; }
    bool hasArrow() const { return m_look.hasArrow; }
    double point() const { return m_point; }
    double margin() const { return popoverMargin; }

Q_SIGNALS:
    void lookChanged();

protected:
    void updatePolish() override;

private:
    template <typename Type>
    void assign(Type& field, const Type& value) {
        if (field == value)
            return;
        field = value;
        Q_EMIT lookChanged();
    }

    PopoverLook m_look;
    double m_point = 1;
};

} // namespace tarnwick
