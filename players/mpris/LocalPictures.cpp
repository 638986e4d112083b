#include "players/mpris/LocalPictures.h"

#include "platform/images/ImageStore.h"
#include "platform/images/PictureReader.h"
#include "players/FileName.h"
#include "players/mpris/LocalFile.h"
#include "players/tags/FileFacts.h"

#include <algorithm>
#include <iterator>

namespace tarnwick::players {

namespace {

constexpr qint64 limit = images::ImageStore::maximumBytes;

/// Names of sleeves in `folder`, the usual ones first, letter case aside.
QStringList sleevesIn(const QString& folder) {
    const QStringList names = filesIn(folder);
    QStringList found;
    for (const char* name : {"cover", "folder", "front"}) {
        for (const char* suffix : {"jpg", "jpeg", "png", "webp", "gif", "bmp", "tif", "tiff"}) {
            const QString sleeve = QStringLiteral("%1.%2").arg(QLatin1String(name), QLatin1String(suffix));
            std::copy_if(names.begin(), names.end(), std::back_inserter(found),
                         [&](const QString& each) { return each.compare(sleeve, Qt::CaseInsensitive) == 0; });
        }
    }
    return found;
}

} // namespace

std::vector<QByteArray> findLocalPictures(const QString& artUrl, const QString& path) {
    std::vector<QByteArray> pictures;
    const auto add = [&](const std::optional<QByteArray>& bytes) {
        if (bytes && !bytes->isEmpty() &&
            std::find(pictures.begin(), pictures.end(), *bytes) == pictures.end())
            pictures.push_back(*bytes);
    };
    add(bytesOfDataUrl(artUrl, limit));
    add(readRegularFile(localPathOf(artUrl), limit));
    if (path.isEmpty())
        return pictures;
    add(readEmbeddedPicture(path, limit));
    const QString folder = path.left(path.lastIndexOf(u'/'));
    for (const QString& name : sleevesIn(folder))
        add(readRegularFile(folder + u'/' + name, limit));
    return pictures;
}

qint64 pixelsOf(const QByteArray& picture) {
    const QSize size = images::PictureReader(picture).size();
    return size.isValid() ? qint64{size.width()} * size.height() : 0;
}

void sortBySize(std::vector<QByteArray>& pictures) {
    std::stable_sort(pictures.begin(), pictures.end(),
                     [](const QByteArray& a, const QByteArray& b) { return pixelsOf(a) > pixelsOf(b); });
}

} // namespace tarnwick::players
