#include "display/pictures/PictureCut.h"

#include "canvas/ContinuousCorners.h"
#include "canvas/MaskBlur.h"

#include <QPainter>

#include <cmath>

namespace tarnwick {

namespace {

void drawShape(QPainter& painter, const QRectF& rect, double radius) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (2 * radius >= std::min(rect.width(), rect.height()))
        painter.drawEllipse(rect);
    else
        painter.drawPath(continuousRectangle(rect, radius));
}

} // namespace

int PictureCut::margin() const {
    if (shadowOpacity <= 0)
        return 1;
    const double reach = shadowRadius + std::max(std::abs(shadowOffset.x()), std::abs(shadowOffset.y()));
    return static_cast<int>(std::ceil(reach)) + 1;
}

QImage cutOut(const QImage& picture, const PictureCut& how) {
    if (picture.isNull())
        return {};
    const int margin = how.margin();
    const QRectF rect(QPointF(margin, margin), QSizeF(how.size));
    const QSize whole = how.size + QSize(2 * margin, 2 * margin);
    QImage result(whole, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    if (how.shadowOpacity > 0) {
        QImage mask(whole, QImage::Format_Alpha8);
        mask.fill(0);
        QPainter shape(&mask);
        shape.setBrush(Qt::black);
        drawShape(shape, rect.translated(how.shadowOffset), how.cornerRadius);
        shape.end();
        blurMask(mask, how.shadowRadius);
        painter.setOpacity(how.shadowOpacity);
        painter.drawImage(0, 0, mask); // an alpha mask paints black
        painter.setOpacity(1);
    }
    QBrush brush(picture);
    brush.setTransform(QTransform::fromTranslate(margin, margin));
    painter.setBrush(brush);
    drawShape(painter, rect, how.cornerRadius);
    painter.end();
    return result;
}

} // namespace tarnwick
