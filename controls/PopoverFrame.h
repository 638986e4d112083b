#pragma once

#include "assets/PictureItem.h"
#include "controls/PopoverPainter.h"

namespace tarnwick {

/// The playlist popover behind its texts, with `margin` points around it for shadow and arrow.
class PopoverFrame : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::options::PlaylistBackgroundOption look MEMBER m_option NOTIFY lookChanged)
    Q_PROPERTY(QList<QColor> gradientColors MEMBER m_gradientColors NOTIFY lookChanged)
    Q_PROPERTY(QColor textColor MEMBER m_textColor NOTIFY lookChanged)
    Q_PROPERTY(bool hasArrow MEMBER m_hasArrow NOTIFY lookChanged)
    /// Logical pixels of a point.
    Q_PROPERTY(double point MEMBER m_point NOTIFY lookChanged)
    /// In points.
    Q_PROPERTY(double margin READ margin CONSTANT)

public:
    explicit PopoverFrame(QQuickItem* parent = nullptr);

    double margin() const { return popoverMargin; }

Q_SIGNALS:
    void lookChanged();

protected:
    void updatePolish() override;

private:
    PlaylistBackgroundOption m_option = PlaylistBackgroundOption::Standard;
    QList<QColor> m_gradientColors;
    QColor m_textColor = Qt::white;
    bool m_hasArrow = true;
    double m_point = 1;
};

} // namespace tarnwick
