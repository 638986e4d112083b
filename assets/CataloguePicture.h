#pragma once

#include "canvas/PictureItem.h"

#include <QColor>

namespace tarnwick {

/// A picture of the catalogue, crisp at every size; nothing when its name is missing.
class CataloguePicture : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    /// The picture's name in the catalogue.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// What a symbol is filled with; other pictures ignore it.
    Q_PROPERTY(QColor tint READ tint WRITE setTint NOTIFY tintChanged)
    /// Width by height of the picture; 1 when it is missing.
    Q_PROPERTY(double aspectRatio READ aspectRatio NOTIFY nameChanged)
    /// Whether the catalogue has the picture.
    Q_PROPERTY(bool exists READ exists NOTIFY nameChanged)

public:
    explicit CataloguePicture(QQuickItem* parent = nullptr);

    void setName(const QString& name);
    void setTint(const QColor& tint);

    const QString& name() const { return m_name; }
    const QColor& tint() const { return m_tint; }
    double aspectRatio() const;
    bool exists() const;

Q_SIGNALS:
    void nameChanged();
    void tintChanged();

private:
    void refresh();

    QString m_name;
    QColor m_tint = Qt::black;
    int m_request = 0; ///< counts up, so that a picture that arrives late is dropped
};

} // namespace tarnwick
