#include "players/mpris/WebPictures.h"

#include "platform/images/ImageStore.h"
#include "players/mpris/LocalFile.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QTimer>

namespace tarnwick::players {

namespace {

constexpr int timeout = 3000; // ms for all of it
constexpr int maximumRedirects = 3;
constexpr qint64 limit = images::ImageStore::maximumBytes;
const QString suffix = QStringLiteral(".picture");

} // namespace

bool WebPictures::isWebUrl(const QString& url) {
    return url.startsWith(QLatin1String("http://"), Qt::CaseInsensitive) ||
           url.startsWith(QLatin1String("https://"), Qt::CaseInsensitive);
}

void WebPictures::load(const QString& url, Loaded loaded) {
    cancel();
    if (m_network == nullptr)
        m_network = new QNetworkAccessManager(this);
    QNetworkRequest request{QUrl(url)};
    request.setMaximumRedirectsAllowed(maximumRedirects);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    QNetworkReply* reply = m_network->get(request);
    m_reply = reply;
    QTimer::singleShot(timeout, reply, &QNetworkReply::abort);
    connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > limit)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply, loaded = std::move(loaded)] {
        reply->deleteLater();
        if (reply != m_reply)
            return; // no longer wanted
        m_reply = nullptr;
        const bool isGood = reply->error() == QNetworkReply::NoError && reply->bytesAvailable() <= limit;
        loaded(isGood ? reply->readAll() : QByteArray());
    });
}

void WebPictures::cancel() {
    if (QNetworkReply* reply = std::exchange(m_reply, nullptr))
        reply->abort();
}

QByteArray WebPictureCache::find(const QString& url, const QString& album) const {
    if (m_folder.isEmpty())
        return {};
    const QString path = pathOf(url, album);
    const QByteArray bytes = readRegularFile(path, limit).value_or(QByteArray());
    if (QFile file(path); !bytes.isEmpty() && file.open(QIODevice::ReadWrite))
        file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return bytes;
}

void WebPictureCache::keep(const QString& url, const QString& album, const QByteArray& bytes) const {
    if (m_folder.isEmpty() || !QDir().mkpath(m_folder))
        return;
    QSaveFile file(pathOf(url, album));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(bytes);
    file.commit();

    qint64 sum = 0;
    const auto kept = QDir(m_folder).entryInfoList({u'*' + suffix}, QDir::Files, QDir::Time); // newest first
    for (const QFileInfo& each : kept) {
        sum += each.size();
        if (sum > maximumBytes)
            QFile::remove(each.filePath());
    }
}

QString WebPictureCache::pathOf(const QString& url, const QString& album) const {
    const QByteArray key =
        QCryptographicHash::hash((url + u'\n' + album).toUtf8(), QCryptographicHash::Blake2b_160);
    return m_folder + u'/' + QString::fromLatin1(key.toHex()) + suffix;
}

} // namespace tarnwick::players
