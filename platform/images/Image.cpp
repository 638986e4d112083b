#include "platform/images/Image.h"

#include "platform/images/ImageContent.h"

#include <QColorSpace>

#include <cstring>
#include <utility>

namespace tarnwick::images {

namespace {

quint64 nextId() {
    static std::atomic<quint64> last = 0;
    return ++last;
}

} // namespace

QImage normalised(const QImage& picture) {
    QImage result = picture;
    // Standard sRGB is what screens and colour arithmetic take for granted.
    if (const QColorSpace space = result.colorSpace(); space.isValid() && space != QColorSpace::SRgb)
        result.convertToColorSpace(QColorSpace::SRgb);
    result.convertTo(QImage::Format_RGBA8888);
    const qsizetype packed = qsizetype{result.width()} * 4;
    if (result.bytesPerLine() != packed) {
        // Only pictures made on a caller's own buffer have gaps: rows of four-byte pixels need none.
        QImage copy(result.size(), QImage::Format_RGBA8888);
        for (int y = 0; y < result.height(); ++y)
            std::memcpy(copy.scanLine(y), result.constScanLine(y), static_cast<std::size_t>(packed));
        result = copy;
    }
    return result;
}

Image::Content::Content(QSize size_, std::function<QImage()> make)
    : id(nextId()), size(size_), m_make(std::move(make)) {}

const QImage& Image::Content::decode() {
    std::call_once(m_once, [this] {
        if (const QImage made = std::exchange(m_make, nullptr)(); !made.isNull())
            m_pixels = normalised(made);
        ready = true;
    });
    return m_pixels;
}

Image Image::fromPixels(const QImage& pixels) {
    auto content = std::make_shared<Content>(pixels.size(), [pixels] { return pixels; });
    content->decode();
    return Image(std::move(content));
}

QSize Image::size() const { return m_content->size; }

QImage Image::pixels() const { return m_content->decode(); }

bool Image::isReady() const { return m_content->ready; }

quint64 Image::id() const { return m_content->id; }

} // namespace tarnwick::images
