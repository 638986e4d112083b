#include "platform/images/ImageStore.h"

#include "platform/images/ImageContent.h"
#include "platform/images/PictureReader.h"

#include <QCryptographicHash>
#include <QImageReader>

namespace tarnwick::images {

namespace {

// A display looks at one cover again and again, and at the one before it during a change.
constexpr std::size_t maximumRecent = 4;

/// The upright size that the header tells; empty when the bytes are no picture we take.
QSize sizeInHeader(const QByteArray& bytes) {
    if (bytes.isEmpty() || bytes.size() > ImageStore::maximumBytes)
        return {};
    const QSize size = PictureReader(bytes).size();
    return qint64{size.width()} * size.height() > ImageStore::maximumPixels ? QSize() : size;
}

} // namespace

ImageStore::ImageStore(dispatch::Dispatcher& dispatcher) : m_dispatcher(dispatcher) {
    // Qt's own limit on a decoded picture, for every depth up to 16 bits a channel.
    QImageReader::setAllocationLimit(static_cast<int>(maximumPixels * 8 / (1024 * 1024)));
}

std::optional<Image> ImageStore::decode(const QByteArray& bytes) {
    bool found = false;
    if (auto image = recent(bytes, found); found)
        return image;

    const std::shared_ptr<Image::Content> content = contentOf(bytes);
    if (!content) {
        remember(bytes, std::nullopt);
        return std::nullopt;
    }
    if (m_dispatcher.isMainThread()) {
        if (!content->ready)
            m_dispatcher.globalQueue(dispatch::QualityOfService::UserInteractive).async([content] {
                content->decode();
            });
    } else if (content->decode().isNull()) {
        remember(bytes, std::nullopt);
        return std::nullopt;
    }
    const Image image(content);
    remember(bytes, image);
    return image;
}

int ImageStore::decodeCount() const { return m_decodeCount; }

std::optional<Image> ImageStore::recent(const QByteArray& bytes, bool& found) const {
    const std::lock_guard lock(m_mutex);
    for (const Recent& entry : m_recent) {
        if (entry.bytes.constData() == bytes.constData() && entry.bytes.size() == bytes.size()) {
            found = true;
            return entry.image;
        }
    }
    return std::nullopt;
}

void ImageStore::remember(const QByteArray& bytes, const std::optional<Image>& image) {
    const std::lock_guard lock(m_mutex);
    m_recent.push_front({bytes, image});
    if (m_recent.size() > maximumRecent)
        m_recent.pop_back();
}

std::shared_ptr<Image::Content> ImageStore::contentOf(const QByteArray& bytes) {
    if (bytes.isEmpty() || bytes.size() > maximumBytes)
        return nullptr;
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Blake2b_256);
    const std::lock_guard lock(m_mutex);
    if (auto known = m_byDigest.value(digest).lock())
        return known;
    const QSize size = sizeInHeader(bytes);
    if (size.isEmpty())
        return nullptr;
    m_byDigest.removeIf([](const auto& entry) { return entry.value().expired(); });
    auto content = std::make_shared<Image::Content>(size, [bytes] { return PictureReader(bytes).read(); });
    m_byDigest.insert(digest, content);
    ++m_decodeCount;
    return content;
}

} // namespace tarnwick::images
