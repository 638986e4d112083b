#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <memory>

namespace tarnwick::images {

/// A handle on a picture. Cheap to copy, safe to pass between threads. Two handles are equal when
/// they stand for the same picture, that is, when they came from equal bytes while one was alive.
class Image {
public:
    struct Content;

    /// A picture that is already decoded, in no store. `pixels` must not be null.
    static Image fromPixels(const QImage& pixels);

    explicit Image(std::shared_ptr<Content> content) : m_content(std::move(content)) {}

    /// Width and height in pixels, upright. Known at once.
    QSize size() const;

    /// The pixels as QImage::Format_RGBA8888 in sRGB: straight alpha, rows packed without gaps.
    /// Decodes, or waits for the thread that does, when that is not done yet, so call it off the main
    /// thread unless `isReady`. A null image when the bytes turned out to be broken.
    QImage pixels() const;

    /// Whether `pixels` returns without waiting.
    bool isReady() const;

    /// A number that no other picture of this process has; for keys of caches and addresses.
    quint64 id() const;

    friend bool operator==(const Image&, const Image&) = default;

private:
    std::shared_ptr<Content> m_content;
};

/// Converts to what `Image::pixels` promises.
QImage normalised(const QImage& picture);

} // namespace tarnwick::images
