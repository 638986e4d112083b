#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

class QNetworkAccessManager;
class QNetworkReply;

namespace tarnwick::players {

/// Loads pictures by `http:` and `https:`. Lives on a thread with an event loop.
class WebPictures : public QObject {
public:
    using Loaded = std::function<void(const QByteArray& bytes)>;

    /// Whether `url` is one to be loaded here.
    static bool isWebUrl(const QString& url);

    /// Calls `loaded` with the bytes, or with none when there are more than 20 MiB, it took more than 3 s,
    /// or was sent on more than three times. A load before that has not ended is dropped.
    void load(const QString& url, Loaded loaded);
    void cancel();

private:
    QNetworkAccessManager* m_network = nullptr; ///< made when it is first needed
    QNetworkReply* m_reply = nullptr;
};

/// Pictures from the web, kept on disk by address and album. Reads and writes the disk, so only in the
/// background; several processes may use one folder.
class WebPictureCache {
public:
    static constexpr qint64 maximumBytes = 64LL * 1024 * 1024;

    /// Keeps nothing when `folder` is empty.
    explicit WebPictureCache(QString folder) : m_folder(std::move(folder)) {}

    /// Empty when it is not there.
    QByteArray find(const QString& url, const QString& album) const;

    /// Keeps `bytes`, and drops those unused the longest when they are too many.
    void keep(const QString& url, const QString& album, const QByteArray& bytes) const;

private:
    QString pathOf(const QString& url, const QString& album) const;

    const QString m_folder;
};

} // namespace tarnwick::players
