#include "controls/picker/PopoverPainter.h"

#include "canvas/ContinuousCorners.h"
#include "canvas/MaskBlur.h"
#include "controls/picker/PickerColours.h"

#include <QPainter>
#include <QPainterPath>

namespace tarnwick {

namespace {

constexpr double cornerRadius = 16;
constexpr double arrowWidth = 20;
constexpr double arrowHeight = 10;
constexpr double cardTop = 37; // title 12 from the top, 17 high, 8 to the card
constexpr double cardInset = 8;

/// A soft shadow, black.
struct Shadow {
    double reach; ///< of the blur, points
    double drop;  ///< below what throws it
    double opacity;
};
constexpr Shadow cardShadow{16, 3, 0.2};
constexpr Shadow dropShadow{18, 6, 0.5};

QPainterPath rounded(const QRectF& rect) { return continuousRectangle(rect, cornerRadius); }

/// Paints the shadow of `shape`, all that the painter paints on, of which a picture has `size` pixels.
void paintShadow(QPainter& painter, QSize size, const QPainterPath& shape, const Shadow& shadow) {
    QImage mask(size, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter onMask(&mask);
    onMask.setRenderHint(QPainter::Antialiasing);
    onMask.setTransform(painter.worldTransform());
    onMask.translate(0, shadow.drop);
    onMask.fillPath(shape, Qt::black);
    onMask.end();
    blurMask(mask, shadow.reach * painter.worldTransform().m11());
    painter.save();
    painter.resetTransform();
    painter.setOpacity(shadow.opacity);
    painter.drawImage(0, 0, mask); // an alpha mask paints black
    painter.restore();
}

QBrush vertical(const QList<QColor>& colours, double height) {
    QLinearGradient gradient(0, 0, 0, height);
    for (qsizetype i = 0; i < colours.size(); ++i)
        gradient.setColorAt(colours.size() > 1 ? double(i) / double(colours.size() - 1) : 0, colours[i]);
    return gradient;
}

void paintBody(QPainter& painter, const PopoverLook& look, const QPainterPath& outline, double width,
               double height) {
    switch (look.option) {
    case PlaylistBackgroundOption::Standard: {
        painter.fillPath(outline, QColor(0x26, 0x26, 0x28));
        QLinearGradient gradient(0, 0, width, height);
        gradient.setColorAt(0, QColor::fromRgbF(0, 0, 0, 0.8F));
        gradient.setColorAt(1, QColor::fromRgbF(0.5F, 0.5F, 0.5F, 0.4F));
        painter.fillPath(outline, gradient);
        painter.strokePath(outline, QPen(QColor::fromRgbF(1, 1, 1, 0.1F), 1));
        break;
    }
    case PlaylistBackgroundOption::Dynamic:
        painter.fillPath(outline, vertical(opaqueColours(look.gradientColors, look.textColor), height));
        painter.fillPath(outline, pickerVeil(look.gradientColors, look.textColor));
        break;
    case PlaylistBackgroundOption::IPod:
        painter.fillPath(outline, Qt::white);
        break;
    }
}

QColor cardColour(const PopoverLook& look) {
    QColor colour = Qt::black;
    if (look.option == PlaylistBackgroundOption::IPod)
        return Qt::white;
    if (look.option == PlaylistBackgroundOption::Dynamic)
        colour = look.textColor;
    colour.setAlphaF(0.2F);
    return colour;
}

/// Clears all of `picture` but `shape`, which `transform` maps to its pixels.
void keepOnly(QImage& picture, const QPainterPath& shape, const QTransform& transform) {
    QImage mask(picture.size(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter onMask(&mask);
    onMask.setRenderHint(QPainter::Antialiasing);
    onMask.setTransform(transform);
    onMask.fillPath(shape, Qt::black);
    onMask.end();
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
}

} // namespace

QImage paintPopover(const PopoverLook& look, double width, double height, double unit) {
    const QSizeF size(width + 2 * popoverMargin, height + 2 * popoverMargin);
    QImage picture((size * unit).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(unit, unit);
    painter.translate(popoverMargin, popoverMargin);

    QPainterPath outline = rounded({0, 0, width, height});
    if (look.hasArrow) {
        QPainterPath arrow(QPointF((width - arrowWidth) / 2, height - 1));
        arrow.lineTo(width / 2, height + arrowHeight);
        arrow.lineTo((width + arrowWidth) / 2, height - 1);
        arrow.closeSubpath();
        outline = outline.united(arrow);
    }
    paintShadow(painter, picture.size(), outline, dropShadow);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillPath(outline, Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    paintBody(painter, look, outline, width, height);

    const QColor card = cardColour(look);
    const QPainterPath cardOutline =
        rounded({cardInset, cardTop, width - 2 * cardInset, height - cardTop - cardInset});
    painter.save();
    painter.setClipPath(outline.subtracted(cardOutline));
    Shadow faded = cardShadow;
    faded.opacity *= card.alphaF(); // what is half clear throws half a shadow
    paintShadow(painter, picture.size(), cardOutline, faded);
    painter.restore();
    if (!look.isPassePartout) {
        painter.fillPath(cardOutline, card);
        return picture;
    }
    QPainterPath corners;
    corners.addRect(cardOutline.boundingRect());
    const QTransform toPixels = painter.worldTransform();
    painter.end();
    keepOnly(picture, corners.subtracted(cardOutline), toPixels);
    return picture;
}

} // namespace tarnwick
