#pragma once

#include "platform/images/Image.h"

#include <QBuffer>
#include <QColor>
#include <QImage>

namespace tarnwick {

/// A picture of one colour.
inline QImage plainPicture(const QColor& colour, QSize size = {64, 64},
                           QImage::Format format = QImage::Format_RGBA8888) {
    QImage picture(size, format);
    picture.fill(colour);
    return picture;
}

inline images::Image plainCover(const QColor& colour, QSize size = {50, 50}) {
    return images::Image::fromPixels(plainPicture(colour, size));
}

/// The bytes of a picture file. `quality` is from 0 to 100, -1 for the usual.
inline QByteArray encoded(const QImage& picture, const char* format = "PNG", int quality = -1) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return picture.save(&buffer, format, quality) ? bytes : QByteArray();
}

} // namespace tarnwick
