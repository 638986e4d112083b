#include "display/veil/VeilPainter.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr double invisible = 0.4 / 255;

/// Evenly spread in 0…1, the same for the same pixel.
float noise(uint x, uint y) {
    uint hash = x * 0x9E3779B1U ^ y * 0x85EBCA77U;
    hash ^= hash >> 15;
    hash *= 0x2C1B3C6DU;
    hash ^= hash >> 12;
    return static_cast<float>(hash >> 8) / static_cast<float>(1U << 24);
}

/// The cells in which something is seen, in points.
QRectF visiblePart(const VeilField& field) {
    QRectF part;
    for (int row = 0; row < field.rows(); ++row) {
        for (int column = 0; column < field.columns(); ++column) {
            const double x = column * VeilField::cell;
            const double y = row * VeilField::cell;
            if (field.at(x + VeilField::cell / 2, y + VeilField::cell / 2) > invisible)
                part |= QRectF(x - VeilField::cell, y - VeilField::cell, 3 * VeilField::cell,
                               3 * VeilField::cell);
        }
    }
    return part;
}

void clip(QImage& picture, const QPointF& corner, const QRectF& surface, const VeilOutline& outline,
          double scale) {
    QImage mask(picture.size(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter painter(&mask);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.scale(scale, scale);
    painter.translate(-corner);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    if (!outline.picture.isNull())
        painter.drawImage(surface, outline.picture);
    else if (outline.round)
        painter.drawEllipse(surface.center(), outline.radius, outline.radius);
    else
        painter.drawRoundedRect(surface, outline.radius, outline.radius);
    painter.end();
    QPainter cutter(&picture);
    cutter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    cutter.drawImage(0, 0, mask);
}

} // namespace

VeilPicture paintVeil(const VeilField& field, const Colour& colour, const QRectF& surface,
                      const VeilOutline& outline, double scale) {
    const QRectF part = field.isEmpty() ? QRectF() : visiblePart(field) & surface;
    if (part.isEmpty() || scale <= 0)
        return {};
    const QRect pixels = QRectF(part.topLeft() * scale, part.size() * scale).toAlignedRect();
    QImage picture(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return {};
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const double alpha = field.at((pixels.x() + x + 0.5) / scale, (pixels.y() + y + 0.5) / scale);
            const auto level =
                static_cast<int>(alpha * 255 + noise(static_cast<uint>(x), static_cast<uint>(y)));
            const int opacity = alpha <= 0 ? 0 : std::min(level, 255);
            line[x] = qRgba(qRound(colour.red * opacity), qRound(colour.green * opacity),
                            qRound(colour.blue * opacity), opacity);
        }
    }
    const QPointF corner = QPointF(pixels.topLeft()) / scale;
    clip(picture, corner, surface, outline, scale);
    const QSizeF size = QSizeF(pixels.size()) / scale;
    return {picture,
            QRectF((corner.x() - surface.x()) / surface.width(),
                   (corner.y() - surface.y()) / surface.height(), size.width() / surface.width(),
                   size.height() / surface.height()),
            field.peak()};
}

} // namespace tarnwick
