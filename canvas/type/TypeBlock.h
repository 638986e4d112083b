#pragma once

#include "canvas/type/TypeItem.h"

namespace tarnwick {

/// A text in centred lines, painted as `TypeItem` paints them. It is broken between words where it is wider
/// than the item, as wide as its text when it has no width of its own, and as high as its lines.
class TypeBlock : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY changed)
    /// Its size is in points, as `typeSize` reads it.
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// Device pixels of a point.
    Q_PROPERTY(double pixelRatio MEMBER m_pixelRatio NOTIFY changed)
    /// What is left when these are full ends in "…".
    Q_PROPERTY(int maximumLines MEMBER m_maximumLines NOTIFY changed)

public:
    explicit TypeBlock(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    void setLines();

    QString m_text;
    QFont m_font;
    QColor m_color{Qt::black};
    double m_pixelRatio = 1;
    int m_maximumLines = 1;
    QList<TypeItem*> m_lines;
};

} // namespace tarnwick
