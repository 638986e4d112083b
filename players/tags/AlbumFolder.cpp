#include "players/tags/AlbumFolder.h"

#include "players/FileName.h"
#include "players/tags/FileFacts.h"
#include "players/tags/TagCache.h"
#include "script/values/Coercion.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <tuple>

namespace tarnwick::players {

namespace {

constexpr qsizetype maximumFiles = 20000;
constexpr qsizetype maximumFolders = 100;

/// The number in the name of a disc's folder; 0 when it is named otherwise.
int discOfFolder(const QString& name) {
    static const QRegularExpression disc(
        QStringLiteral("^(?:cd|dvd|disc|disk|disco|disque|lp)[ ._-]*(\\d{1,2})(?!\\d)"),
        QRegularExpression::CaseInsensitiveOption);
    return disc.match(name).captured(1).toInt();
}

/// The folder of `path` and those of the album's other discs.
QStringList foldersOf(const QString& path) {
    const QDir own = QFileInfo(path).dir();
    QStringList folders{own.path()};
    QDir above = own;
    if (discOfFolder(own.dirName()) == 0 || !above.cdUp())
        return folders;
    const QStringList names = above.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        const QString folder = above.filePath(name);
        if (discOfFolder(name) > 0 && folder != own.path() && folders.size() < maximumFolders)
            folders.append(folder);
    }
    return folders;
}

bool areEqual(const QString& a, const QString& b) {
    return a == b || script::comparisonKey(a) == script::comparisonKey(b);
}

} // namespace

std::vector<Track> readAlbum(const Track& current, const Track& inFile, TagCache& tags,
                             const std::function<bool()>& isUnwanted) {
    std::vector<Track> tracks;
    qsizetype files = 0;
    bool hasCurrent = false;
    for (const QString& folder : foldersOf(current.path)) {
        const QDir directory(folder);
        const int disc = discOfFolder(directory.dirName());
        const QStringList names = filesIn(folder);
        tracks.reserve(tracks.size() + static_cast<std::size_t>(std::min(names.size(), maximumFiles)));
        for (const QString& name : names) {
            if (isUnwanted() || ++files > maximumFiles)
                break;
            const QString path = folder + u'/' + name;
            if (path == current.path) {
                tracks.push_back(current);
                hasCurrent = true;
                continue;
            }
            if (!isMusicFileName(name))
                continue;
            const auto facts = tags.read(path);
            if (!facts || !(areEqual(facts->album, inFile.album) || areEqual(facts->album, current.album)))
                continue;
            Track track = *facts;
            track.album = current.album;
            if (areEqual(track.artist, inFile.artist))
                track.artist = current.artist;
            if (track.name.isEmpty())
                track.name = readableName(QFileInfo(name).completeBaseName());
            if (track.discNumber == 0)
                track.discNumber = disc;
            tracks.push_back(std::move(track));
        }
    }
    if (!hasCurrent)
        tracks.push_back(current);
    std::sort(tracks.begin(), tracks.end(), [](const Track& a, const Track& b) {
        return std::tie(a.discNumber, a.trackNumber, a.path) < std::tie(b.discNumber, b.trackNumber, b.path);
    });
    return tracks;
}

} // namespace tarnwick::players
