#pragma once

#include "platform/images/Image.h"

#include <atomic>
#include <mutex>

namespace tarnwick::images {

/// What the handles of one picture share.
struct Image::Content {
    Content(QSize size_, const QByteArray& bytes_);

    /// Decodes on the first call; later and simultaneous calls wait for it.
    const QImage& decode();

    const quint64 id;
    const QSize size;
    const QByteArray bytes; ///< as encoded; empty when the picture was never encoded
    std::atomic<bool> ready = false;

private:
    std::once_flag m_once;
    QImage m_pixels;
    friend class Image;
};

} // namespace tarnwick::images
