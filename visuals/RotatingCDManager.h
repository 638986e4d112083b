#pragma once

#include "visuals/DiscImage.h"
#include "visuals/RandomIndex.h"

#include <QObject>

#include <functional>

namespace tarnwick {

/// Which disc is shown and whether it shall turn. Main thread only.
class RotatingCDManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(tarnwick::DiscImage cdImage READ cdImage NOTIFY cdImageChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying WRITE setIsPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(bool rotateCDDuringPlayback READ rotateCDDuringPlayback WRITE setRotateCDDuringPlayback NOTIFY
                   rotateCDDuringPlaybackChanged)
    Q_PROPERTY(bool randomRotationEnabled READ randomRotationEnabled WRITE setRandomRotationEnabled NOTIFY
                   randomRotationEnabledChanged)

public:
    using LogLine = std::function<void(const QString&)>;

    /// `catalogue` must outlive the manager.
    RotatingCDManager(const Catalogue& catalogue, RandomIndex randomIndex, LogLine log,
                      QObject* parent = nullptr);

    /// The picture of any disc on offer, each as likely as the other; none when it is missing.
    DiscImage randomRecordImage();

    /// Shows `image`, or, when that is none, a disc drawn at random or the default one.
    void updateRecord(const DiscImage& image, bool isPlaying, bool rotate);

    void updatePlayback(bool isPlaying, bool rotate);

    /// Each setter publishes only a change.
    void setCdImage(const DiscImage& image);
    void setIsPlaying(bool playing);
    void setRotateCDDuringPlayback(bool rotate);
    void setRandomRotationEnabled(bool enabled);

    const DiscImage& cdImage() const { return m_cdImage; }
    bool isPlaying() const { return m_isPlaying; }
    bool rotateCDDuringPlayback() const { return m_rotateCDDuringPlayback; }
    bool randomRotationEnabled() const { return m_randomRotationEnabled; }

Q_SIGNALS:
    void cdImageChanged();
    void isPlayingChanged();
    void rotateCDDuringPlaybackChanged();
    void randomRotationEnabledChanged();

private:
    const Catalogue& m_catalogue;
    RandomIndex m_randomIndex;
    LogLine m_log;
    DiscImage m_cdImage;
    bool m_isPlaying = false;
    bool m_rotateCDDuringPlayback = true;
    bool m_randomRotationEnabled = false;
};

} // namespace tarnwick
