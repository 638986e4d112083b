#pragma once

#include "canvas/PictureItem.h"
#include "controls/picker/PopoverPainter.h"

namespace tarnwick {

/// The playlist popover behind its texts, with `margin` points around it for shadow and arrow. Made off the
/// main thread whenever its look or its size changes; until then it shows the one before.
class PopoverFrame : public tarnwick::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::options::PlaylistBackgroundOption look MEMBER m_option NOTIFY lookChanged)
    Q_PROPERTY(QList<QColor> gradientColors MEMBER m_gradientColors NOTIFY lookChanged)
    Q_PROPERTY(QColor textColor MEMBER m_textColor NOTIFY lookChanged)
    Q_PROPERTY(bool hasArrow MEMBER m_hasArrow NOTIFY lookChanged)
    /// Whether it is only what lies round the card's corners, which cuts what lies under it to the card.
    Q_PROPERTY(bool isPassePartout MEMBER m_isPassePartout NOTIFY lookChanged)
    /// Logical pixels of a point.
    Q_PROPERTY(double point MEMBER m_point NOTIFY lookChanged)
    /// In points.
    Q_PROPERTY(double margin READ margin CONSTANT)
    /// Whether there is something to be seen.
    Q_PROPERTY(bool isThere READ isThere NOTIFY isThereChanged)

public:
    explicit PopoverFrame(QQuickItem* parent = nullptr);

    double margin() const { return popoverMargin; }
    bool isThere() const { return picture() != nullptr; }

Q_SIGNALS:
    void lookChanged();
    void isThereChanged();

protected:
    void updatePolish() override;

private:
    PlaylistBackgroundOption m_option = PlaylistBackgroundOption::Standard;
    QList<QColor> m_gradientColors;
    QColor m_textColor = Qt::white;
    bool m_hasArrow = true;
    bool m_isPassePartout = false;
    double m_point = 1;
    bool m_isOld = true;
    bool m_isMaking = false;
};

} // namespace tarnwick
