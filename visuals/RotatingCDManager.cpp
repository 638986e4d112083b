#include "visuals/RotatingCDManager.h"

#include "visuals/CDImageOption.h"

namespace tarnwick {

RotatingCDManager::RotatingCDManager(const Catalogue& catalogue, RandomIndex randomIndex, LogLine log,
                                     QObject* parent)
    : QObject(parent), m_catalogue(catalogue), m_randomIndex(std::move(randomIndex)), m_log(std::move(log)) {}

DiscImage RotatingCDManager::randomRecordImage() {
    const QList<CDImageOption>& options = imageOptions();
    if (options.isEmpty()) {
        m_log(QStringLiteral("Errore: Nessuna immagine disponibile per la selezione casuale."));
        return {};
    }
    return DiscImage::named(m_catalogue, options.at(m_randomIndex(static_cast<int>(options.size()))).tag);
}

void RotatingCDManager::updateRecord(const DiscImage& image, bool isPlaying, bool rotate) {
    if (!image.isNull()) {
        setCdImage(image);
    } else if (m_randomRotationEnabled) {
        m_log(QStringLiteral("Aggiornamento immagine casuale."));
        setCdImage(randomRecordImage());
    } else {
        setCdImage(DiscImage::named(m_catalogue, QStringLiteral("cddefault")));
    }
    setIsPlaying(isPlaying);
    setRotateCDDuringPlayback(rotate);
}

void RotatingCDManager::updatePlayback(bool isPlaying, bool rotate) {
    setIsPlaying(isPlaying);
    setRotateCDDuringPlayback(rotate);
}

void RotatingCDManager::setCdImage(const DiscImage& image) {
    if (m_cdImage == image)
        return;
    m_cdImage = image;
    Q_EMIT cdImageChanged();
}

void RotatingCDManager::setIsPlaying(bool playing) {
    if (m_isPlaying == playing)
        return;
    m_isPlaying = playing;
    Q_EMIT isPlayingChanged();
}

void RotatingCDManager::setRotateCDDuringPlayback(bool rotate) {
    if (m_rotateCDDuringPlayback == rotate)
        return;
    m_rotateCDDuringPlayback = rotate;
    Q_EMIT rotateCDDuringPlaybackChanged();
}

void RotatingCDManager::setRandomRotationEnabled(bool enabled) {
    if (m_randomRotationEnabled == enabled)
        return;
    m_randomRotationEnabled = enabled;
    Q_EMIT randomRotationEnabledChanged();
}

} // namespace tarnwick
