#include "assets/PictureRenderer.h"

#include "canvas/Dither.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

namespace tarnwick {

namespace {

/// What the catalogue's pictures are that are no vectors.
constexpr const char* rasterFormat = "webp";

bool isVector(const QByteArray& encoded) { return encoded.startsWith("<"); }

/// A view box of other proportions than the page lies in its middle and shows what is beside it; Qt would
/// stretch it to the page.
void showWholePage(QSvgRenderer& renderer) {
    const QRectF box = renderer.viewBoxF();
    const QSizeF page = QSizeF(renderer.defaultSize()).scaled(box.size(), Qt::KeepAspectRatioByExpanding);
    if (!box.isEmpty() && !page.isEmpty())
        renderer.setViewBox(QRectF(box.center() - QPointF(page.width() / 2, page.height() / 2), page));
}

QImage renderVector(const QByteArray& svg, QSize size) {
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return {};
    const QRectF whole{QPointF(), QSizeF(size)};
    const auto mark = QStringLiteral("mark");
    if (!renderer.elementExists(mark)) {
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        showWholePage(renderer);
        renderer.render(&painter, whole);
        return picture;
    }
    // A mark before a backdrop: the backdrop is stretched to the picture, the mark keeps its proportions
    // and its place. A dark backdrop has few levels, so it is painted with more of them than are shown.
    QImage backdrop(size, QImage::Format_RGBA64_Premultiplied);
    backdrop.fill(Qt::transparent);
    QPainter behind(&backdrop);
    renderer.render(&behind, QStringLiteral("backdrop"), whole);
    behind.end();
    QImage picture = dithered(backdrop);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QSizeF drawn = renderer.defaultSize();
    const double scale = std::min(whole.width() / drawn.width(), whole.height() / drawn.height());
    QRectF place = renderer.boundsOnElement(mark);
    const QPointF centre(place.center().x() / drawn.width() * whole.width(),
                         place.center().y() / drawn.height() * whole.height());
    place.setSize(place.size() * scale);
    place.moveCenter(centre);
    renderer.render(&painter, mark, place);
    return picture;
}

QImage renderRaster(const QByteArray& encoded, QSize size) {
    const QImage picture =
        QImage::fromData(encoded, rasterFormat).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return picture.isNull() ? picture : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QSize naturalSizeOf(const QByteArray& encoded) {
    if (isVector(encoded))
        return QSvgRenderer(encoded).defaultSize();
    QByteArray bytes = encoded;
    QBuffer buffer(&bytes);
    return QImageReader(&buffer, rasterFormat).size();
}

QImage renderPicture(const QByteArray& encoded, QSize size) {
    return isVector(encoded) ? renderVector(encoded, size) : renderRaster(encoded, size);
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
