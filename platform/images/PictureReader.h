#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>

namespace tarnwick::images {

/// Reads an encoded PNG, JPEG, WebP, GIF (first frame), BMP or TIFF. The format is told by the first bytes:
/// Qt's own search would load every plugin there is and hand them what somebody sent. Other bytes are no
/// picture. Any thread.
class PictureReader {
public:
    explicit PictureReader(const QByteArray& encoded);

    /// The upright size that the header tells; empty when the bytes are no picture.
    QSize size() const;

    /// The picture, upright. Null when the bytes are none or broken.
    QImage read();

private:
    QByteArray m_encoded;
    QBuffer m_buffer{&m_encoded};
    QImageReader m_reader;
};

} // namespace tarnwick::images
