#include "display/pictures/FolderPicture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarnwick {

std::optional<FolderPicture> findFolderPicture(const QString& folder, int discNumber,
                                               images::ImageStore& store) {
    QStringList names{QStringLiteral("cassette.png")};
    if (discNumber != 0)
        names.append(QStringLiteral("cd%1.png").arg(discNumber));
    names.append({QStringLiteral("cd.png"), QStringLiteral("vinyl.png")});
    for (const QString& name : names) {
        const QString path = QDir(folder).filePath(name);
        if (!QFileInfo(path).isFile())
            continue;
        FolderPicture found{name.toLower().contains(QLatin1String("cassette")), std::nullopt};
        QFile file(path);
        // One more than allowed, so that the store sees when a file is too large.
        if (file.open(QIODevice::ReadOnly))
            found.image = store.decode(file.read(images::ImageStore::maximumBytes + 1));
        return found;
    }
    return std::nullopt;
}

} // namespace tarnwick
