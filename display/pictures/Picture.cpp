#include "display/pictures/Picture.h"

#include <cmath>

namespace tarnwick {

QRectF Picture::placeIn(const QSizeF& area, double pixelRatio) const {
    const auto onPixels = [&](double length) { return std::round(length * pixelRatio) / pixelRatio; };
    const double width = std::min(area.width(), area.height() * aspectRatio());
    const double height = onPixels(width / aspectRatio());
    return {0, onPixels((area.height() - height) / 2), onPixels(width), height};
}

QImage fitted(const Catalogue& catalogue, const Picture& picture, QSize size) {
    if (!picture.image) {
        const auto drawn = picture.disc.render(std::min(size.width(), size.height()));
        return drawn ? *drawn : QImage();
    }
    if (const QString name = catalogue.nameOf(*picture.image); !name.isEmpty()) {
        const auto drawn = catalogue.picture(name, size);
        return drawn ? *drawn : QImage();
    }
    const QImage pixels = picture.image->pixels();
    if (pixels.isNull())
        return {};
    return pixels.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace tarnwick
