#pragma once

#include "canvas/PictureItem.h"

#include <QColor>

namespace tarnwick {

/// A flag of the catalogue with round corners and a hair of an edge; nothing when its name is missing. One
/// unit of the item's size is one device pixel.
class FlagPicture : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name WRITE setName NOTIFY nameChanged)
    /// Device pixels.
    Q_PROPERTY(double radius MEMBER m_radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(double edgeWidth MEMBER m_edgeWidth WRITE setEdgeWidth NOTIFY edgeWidthChanged)
    Q_PROPERTY(QColor edge MEMBER m_edge WRITE setEdge NOTIFY edgeChanged)

public:
    explicit FlagPicture(QQuickItem* parent = nullptr);

    void setName(const QString& name);
    void setRadius(double radius);
    void setEdgeWidth(double width);
    void setEdge(const QColor& edge);

Q_SIGNALS:
    void nameChanged();
    void radiusChanged();
    void edgeWidthChanged();
    void edgeChanged();

protected:
    void updatePolish() override;

private:
    QString m_name;
    double m_radius = 0;
    double m_edgeWidth = 1;
    QColor m_edge;
};

} // namespace tarnwick
