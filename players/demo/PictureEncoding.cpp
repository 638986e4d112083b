#include "players/demo/PictureEncoding.h"

#include <QBuffer>
#include <QImageWriter>

namespace tarnwick::players {

namespace {

QByteArray encoded(const QImage& picture, const char* format, int quality, int compression) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setCompression(compression);
    writer.write(picture);
    return bytes;
}

} // namespace

QByteArray encodePhotograph(const QImage& picture) { return encoded(picture, "jpeg", 96, 0); }

QByteArray encodeDrawing(const QImage& picture) { return encoded(picture, "png", -1, 30); }

} // namespace tarnwick::players
