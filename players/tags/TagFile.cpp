#include "players/tags/TagFile.h"

#include "players/FileName.h"

#include <QFile>
#include <QtEndian>
#include <fcntl.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/mpegfile.h>
#include <taglib/tbytevectorstream.h>

#include <algorithm>

namespace tarnwick::players {

namespace {

constexpr qint64 maximumTag = 32LL * 1024 * 1024;

/// A DSF file: a header with the format, and an ID3 tag somewhere behind the sound.
TagFile openDsf(const QString& path) {
    TagFile result;
    QFile file;
    const int descriptor = ::open(bytesOfName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return result;
    const QByteArray header = file.read(80);
    if (header.size() < 80 || !header.startsWith("DSD ") || header.mid(28, 4) != "fmt ")
        return result;
    const auto number = [&](int offset) { return qFromLittleEndian<quint32>(header.constData() + offset); };
    const auto longNumber = [&](int offset) {
        return qFromLittleEndian<qint64>(header.constData() + offset);
    };
    result.dsfChannels = static_cast<int>(std::min<quint32>(number(52), 16));
    result.dsfSampleRate = static_cast<int>(std::min<quint32>(number(56), 100'000'000));
    result.dsfSamples = std::max<qint64>(0, longNumber(64));
    const qint64 tag = longNumber(20);
    QByteArray bytes;
    if (tag > 0 && tag < file.size() && file.seek(tag))
        bytes = file.read(std::min(file.size() - tag, maximumTag));
    result.stream = std::make_unique<TagLib::ByteVectorStream>(
        TagLib::ByteVector(bytes.constData(), static_cast<unsigned>(bytes.size())));
    result.reference = TagLib::FileRef(
        new TagLib::MPEG::File(result.stream.get(), TagLib::ID3v2::FrameFactory::instance(), false));
    return result;
}

} // namespace

TagFile openTagFile(const QString& path, bool withProperties) {
    if (path.endsWith(QLatin1String(".dsf"), Qt::CaseInsensitive))
        return openDsf(path);
    TagFile result;
    result.reference = TagLib::FileRef(bytesOfName(path).constData(), withProperties);
    return result;
}

} // namespace tarnwick::players
