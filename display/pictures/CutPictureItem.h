#pragma once

#include "canvas/PictureItem.h"
#include "canvas/SettleTimer.h"
#include "display/pictures/Picture.h"
#include "display/pictures/PictureCut.h"

namespace tarnwick {

/// A picture that fills its item, cut to a rounded rectangle or an ellipse, with its shadow around it.
///
/// It is made off the main thread in the device pixels of the item, once for a picture and a size. Until
/// it is ready the one before stays, and while the item is being resized it is stretched.
class CutPictureItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::Picture picture READ picture WRITE setPicture NOTIFY pictureChanged)
    /// Device pixels for a unit of the item's size.
    Q_PROPERTY(double pixelRatio READ pixelRatio WRITE setPixelRatio NOTIFY cutChanged)
    Q_PROPERTY(double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cutChanged)
    /// Cuts to the ellipse inside the item.
    Q_PROPERTY(bool isRound READ isRound WRITE setRound NOTIFY cutChanged)
    /// Black; 0 for no shadow.
    Q_PROPERTY(double shadowOpacity READ shadowOpacity WRITE setShadowOpacity NOTIFY cutChanged)
    Q_PROPERTY(double shadowRadius READ shadowRadius WRITE setShadowRadius NOTIFY cutChanged)
    /// Downwards.
    Q_PROPERTY(double shadowOffset READ shadowOffset WRITE setShadowOffset NOTIFY cutChanged)
    /// How much of the picture has come, 0…1; the one before lies under it until all of it has.
    Q_PROPERTY(double fade READ fade WRITE setFade NOTIFY fadeChanged)
    /// There is a picture on the screen.
    Q_PROPERTY(bool isShown READ isShown NOTIFY shown)

public:
    explicit CutPictureItem(QQuickItem* parent = nullptr);

    void setPicture(const Picture& picture);
    void setPixelRatio(double ratio) { setCutValue(m_pixelRatio, ratio); }
    void setCornerRadius(double radius) { setCutValue(m_cornerRadius, radius); }
    void setRound(bool round) { setCutValue(m_isRound, round); }
    void setShadowOpacity(double opacity) { setCutValue(m_shadowOpacity, opacity); }
    void setShadowRadius(double radius) { setCutValue(m_shadowRadius, radius); }
    void setShadowOffset(double offset) { setCutValue(m_shadowOffset, offset); }

    void setFade(double fade);

    const Picture& picture() const { return m_picture; }
    double pixelRatio() const { return m_pixelRatio; }
    double cornerRadius() const { return m_cornerRadius; }
    bool isRound() const { return m_isRound; }
    double shadowOpacity() const { return m_shadowOpacity; }
    double shadowRadius() const { return m_shadowRadius; }
    double shadowOffset() const { return m_shadowOffset; }
    double fade() const { return m_layer->opacity(); }

    /// How a picture is cut that is shown `size` large, in units of the item's.
    PictureCut cutFor(QSizeF size) const;

    bool isShown() const { return m_layer->picture() != nullptr; }

Q_SIGNALS:
    void pictureChanged();
    void cutChanged();
    void fadeChanged();
    /// Another picture is on the screen, or none any more.
    void shown();
    /// A picture is about to take the place of another; with `fade` at 0 it does so gently.
    void replaced();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& to, const QRectF& from) override;
    void updatePolish() override;

private:
    template <typename T>
    void setCutValue(T& field, T value) {
        if (field == value)
            return;
        field = value;
        Q_EMIT cutChanged();
        m_settling.start(); // a window that goes to full screen changes this and then its size
    }

    void remake();
    void show(std::shared_ptr<const QImage> drawn, const Picture& picture, const PictureCut& cut);
    void layOut();
    void keepBefore();

    PictureItem* const m_before; // what the picture comes over, else nothing
    PictureItem* const m_layer;
    Picture m_picture;
    double m_pixelRatio = 1;
    double m_cornerRadius = 0;
    bool m_isRound = false;
    double m_shadowOpacity = 0;
    double m_shadowRadius = 0;
    double m_shadowOffset = 0;

    // What was asked for last, and what is on the screen.
    Picture m_asked;
    PictureCut m_askedCut;
    Picture m_shown;
    PictureCut m_shownCut;
    QPointF m_laidOutAt; // where the item was
    quint64 m_order = 0;
    SettleTimer m_settling{[this] { remake(); }};
};

} // namespace tarnwick
