#pragma once

#include "platform/images/Image.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace tarnwick::images {

/// What the handles of one picture share.
struct Image::Content {
    /// `make` gives the pixels when they are first asked for, on any thread; a null picture when it can't.
    Content(QSize size_, std::function<QImage()> make);

    /// Makes the pixels on the first call; later and simultaneous calls wait for it.
    const QImage& decode();

    const quint64 id;
    const QSize size;
    std::atomic<bool> ready = false;

private:
    std::once_flag m_once;
    std::function<QImage()> m_make; ///< empty once it has been called
    QImage m_pixels;
};

} // namespace tarnwick::images
