#include "assets/PictureRenderer.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

namespace tarnwick {

namespace {

bool isVector(const QByteArray& encoded) { return encoded.startsWith("<"); }

} // namespace

QSize naturalSizeOf(const QByteArray& encoded) {
    if (isVector(encoded))
        return QSvgRenderer(encoded).defaultSize();
    QByteArray bytes = encoded;
    QBuffer buffer(&bytes);
    return QImageReader(&buffer).size();
}

QImage renderVector(const QByteArray& svg, QSize size) {
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return {};
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    return picture;
}

QImage renderRaster(const QByteArray& encoded, QSize size) {
    const QImage picture = QImage::fromData(encoded).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return picture.isNull() ? picture : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage tinted(QImage picture, const QColor& tint) {
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), tint);
    return picture;
}

QImage edged(QImage picture) {
    QPainter painter(&picture);
    painter.setPen(QPen(QColor(128, 128, 128, 110), 1));
    painter.drawRect(QRectF(picture.rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    return picture;
}

} // namespace tarnwick
