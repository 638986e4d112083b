#include "platform/images/PictureReader.h"

#include <array>
#include <string_view>

namespace tarnwick::images {

namespace {

using namespace std::string_view_literals;

struct Signature {
    const char* format;
    std::string_view start;
    std::string_view atEight; ///< what follows after eight bytes; empty for anything
};
constexpr std::array signatures{
    Signature{"png", "\x89PNG\r\n\x1a\n"sv, ""sv},
    Signature{"jpeg", "\xff\xd8\xff"sv, ""sv},
    Signature{"webp", "RIFF"sv, "WEBP"sv},
    Signature{"gif", "GIF8"sv, ""sv},
    Signature{"bmp", "BM"sv, ""sv},
    Signature{"tiff", "II*\0"sv, ""sv},
    Signature{"tiff", "MM\0*"sv, ""sv},
};

/// Null when it is none of the formats.
const char* formatOf(const QByteArray& encoded) {
    const std::string_view bytes(encoded.constData(), static_cast<std::size_t>(encoded.size()));
    constexpr std::size_t eight = 8;
    for (const Signature& signature : signatures) {
        if (bytes.starts_with(signature.start) &&
            (signature.atEight.empty() ||
             (bytes.size() > eight && bytes.substr(eight).starts_with(signature.atEight))))
            return signature.format;
    }
    return nullptr;
}

} // namespace

PictureReader::PictureReader(const QByteArray& encoded) : m_encoded(encoded) {
    const char* const format = formatOf(m_encoded);
    if (!format)
        return;
    m_reader.setAutoDetectImageFormat(false);
    m_reader.setAutoTransform(true);
    m_reader.setFormat(format);
    m_reader.setDevice(&m_buffer);
}

QSize PictureReader::size() const {
    const QSize size = m_reader.device() ? m_reader.size() : QSize();
    return m_reader.transformation() & QImageIOHandler::TransformationRotate90 ? size.transposed() : size;
}

QImage PictureReader::read() { return m_reader.device() ? m_reader.read() : QImage(); }

} // namespace tarnwick::images
