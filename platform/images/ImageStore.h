#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/images/Image.h"

#include <QHash>

#include <deque>
#include <mutex>
#include <optional>

namespace tarnwick::images {

/// Turns encoded pictures into handles. Any thread may call it.
class ImageStore {
public:
    /// Larger files are no pictures.
    static constexpr qsizetype maximumBytes = qsizetype{20} * 1024 * 1024;
    /// Neither are pictures with more pixels.
    static constexpr qint64 maximumPixels = qint64{64} * 1024 * 1024;

    /// `dispatcher` must outlive the store.
    explicit ImageStore(dispatch::Dispatcher& dispatcher);

    /// The handle of a PNG, JPEG, WebP, GIF (first frame), BMP or TIFF; equal bytes give the same
    /// handle as long as one is alive. None when the bytes are no such picture or beyond the limits.
    ///
    /// Off the main thread the pixels are made before it returns, so bytes that break off half-way
    /// give none. On the main thread the pixels are made in the background and only the header is
    /// looked at; bytes that this store has seen cost nothing there.
    std::optional<Image> decode(const QByteArray& bytes);

    /// How many pictures were decoded so far; for measurements and tests.
    int decodeCount() const;

private:
    struct Recent {
        QByteArray bytes; // held, so that the address cannot come to mean other bytes
        std::optional<Image> image;
    };

    std::optional<Image> recent(const QByteArray& bytes, bool& found) const;
    void remember(const QByteArray& bytes, const std::optional<Image>& image);
    std::shared_ptr<Image::Content> contentOf(const QByteArray& bytes);

    dispatch::Dispatcher& m_dispatcher;
    mutable std::mutex m_mutex;
    QHash<QByteArray, std::weak_ptr<Image::Content>> m_byDigest;
    std::deque<Recent> m_recent;
    std::atomic<int> m_decodeCount = 0;
};

} // namespace tarnwick::images
