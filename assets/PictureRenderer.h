#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QSize>

namespace tarnwick {

/// The size an encoded picture, vector or raster, says it has. Empty when it is none.
QSize naturalSizeOf(const QByteArray& encoded);

/// An encoded picture, vector or raster, at `size` device pixels, premultiplied. Null when it is none.
QImage renderPicture(const QByteArray& encoded, QSize size);

/// The shape of `picture` filled with `tint`.
QImage tinted(QImage picture, const QColor& tint);

/// `picture` with a hair-line along its border, so that white is seen on white and black on black.
QImage edged(QImage picture);

} // namespace tarnwick
