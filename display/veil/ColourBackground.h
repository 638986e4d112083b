#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tarnwick {

/// The colours of the cover from top to bottom, without steps: between two dark colours lie so few levels
/// that each would be a band across a large screen.
///
/// What the colours let through is black under white text and white under black, so that the fade of a colour
/// only raises the contrast of the text. They are painted before the next frame, a narrow strip of which the
/// item is tiled.
class ColourBackground : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<QColor> colors READ colors WRITE setColors NOTIFY colorsChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    /// Device pixels of a point.
    Q_PROPERTY(double pixelRatio READ pixelRatio WRITE setPixelRatio NOTIFY pixelRatioChanged)

public:
    explicit ColourBackground(QQuickItem* parent = nullptr);

    void setColors(const QList<QColor>& colors) {
        assign(m_colors, colors, &ColourBackground::colorsChanged);
    }
    void setTextColor(const QColor& color) {
        assign(m_textColor, color, &ColourBackground::textColorChanged);
    }
    void setPixelRatio(double ratio) { assign(m_pixelRatio, ratio, &ColourBackground::pixelRatioChanged); }

    const QList<QColor>& colors() const { return m_colors; }
    QColor textColor() const { return m_textColor; }
    double pixelRatio() const { return m_pixelRatio; }

    /// The strip for so many rows.
    QImage strip(int rows) const;

Q_SIGNALS:
    void colorsChanged();
    void textColorChanged();
    void pixelRatioChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    template <typename T>
    void assign(T& field, const T& value, void (ColourBackground::*changed)()) {
        if (field == value)
            return;
        field = value;
        m_isStale = true;
        update();
        Q_EMIT(this->*changed)();
    }

    QList<QColor> m_colors;
    QColor m_textColor{Qt::white};
    double m_pixelRatio = 1;
    bool m_isStale = true;
};

} // namespace tarnwick
