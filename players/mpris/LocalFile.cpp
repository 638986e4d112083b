#include "players/mpris/LocalFile.h"

#include "players/FileName.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace tarnwick::players {

namespace {

const QString scheme = QStringLiteral("file:");

bool isRegularFile(const QString& path) {
    struct stat status {};
    return !path.isEmpty() && ::stat(bytesOfName(path).constData(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

QString localPathOf(const QString& url) {
    if (url.startsWith(u'/'))
        return isRegularFile(url) ? url : QString();
    if (!url.startsWith(scheme, Qt::CaseInsensitive))
        return {};
    QString raw = url.mid(scheme.size());
    if (raw.startsWith(QLatin1String("//"))) {
        // What stands between the second slash and the third is a host: this one.
        raw = raw.mid(std::max<qsizetype>(raw.indexOf(u'/', 2), 2));
    }
    if (!raw.startsWith(u'/'))
        return {};
    // A URL first, then a path that somebody put behind "file://" as it was, then one half escaped.
    const QString decoded = nameFromBytes(QByteArray::fromPercentEncoding(raw.toUtf8()));
    const QString strict = QUrl(url).toLocalFile();
    for (const QString& candidate : {strict, decoded, raw}) {
        if (isRegularFile(candidate))
            return candidate;
    }
    return {};
}

QList<QDate> datesOfFile(const QString& path) {
    struct statx status {};
    if (::statx(AT_FDCWD, bytesOfName(path).constData(), AT_STATX_SYNC_AS_STAT,
                STATX_BTIME | STATX_CTIME | STATX_MTIME, &status) != 0)
        return {};
    QList<QDate> dates;
    for (const auto& time : {status.stx_mtime, status.stx_ctime, status.stx_btime})
        dates.append(QDateTime::fromSecsSinceEpoch(time.tv_sec).date());
    return dates;
}

std::optional<QByteArray> readRegularFile(const QString& path, qint64 limit) {
    const int descriptor = ::open(bytesOfName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    struct stat status {};
    QFile file;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > limit ||
        !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    return file.read(limit);
}

std::optional<QByteArray> bytesOfDataUrl(const QString& url, qint64 limit) {
    const auto comma = url.indexOf(u',');
    if (!url.startsWith(QLatin1String("data:"), Qt::CaseInsensitive) || comma < 0 ||
        url.size() > limit * 4 / 3 + 1024)
        return std::nullopt;
    const QByteArray body = url.mid(comma + 1).toUtf8();
    const QByteArray plain = QByteArray::fromPercentEncoding(body);
    if (!url.left(comma).endsWith(QLatin1String(";base64"), Qt::CaseInsensitive))
        return plain;
    return QByteArray::fromBase64(plain);
}

} // namespace tarnwick::players
