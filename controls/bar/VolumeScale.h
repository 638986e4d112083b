#pragma once

#include "music/MusicSource.h"
#include "platform/dispatch/Dispatcher.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tarnwick {

/// The volume as it is changed without the bar: by the wheel, by keys, by a finger at the edge. A quiet scale
/// tells it meanwhile. Main thread only.
class VolumeScale : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The bar's controls have it")

    /// 0 to 1.
    Q_PROPERTY(double level READ level NOTIFY levelChanged)
    /// Whether the scale is to be seen.
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged)

public:
    static constexpr double step = 0.05;
    /// How long the scale stays after the last change.
    static constexpr dispatch::Duration stayTime = std::chrono::milliseconds(1500);

    /// Both must outlive the scale.
    VolumeScale(dispatch::Dispatcher& dispatcher, MusicSource& source);
    ~VolumeScale() override;

    /// Changes the volume by whole per cents; beyond an end means that end.
    Q_INVOKABLE void change(double by);

    /// A turn of a wheel, in the eighths of a degree of its events; away from the user is louder.
    Q_INVOKABLE void turn(double eighths);

    /// What a finger that moves does: `level` is a fraction, beyond 0 to 1 it means the end.
    Q_INVOKABLE void slideTo(double level);

    /// Silence, or what was before it.
    void toggleMute();

    /// Whether the player has a volume; without one nothing happens and nothing is shown.
    void setAvailable(bool isAvailable) { m_isAvailable = isAvailable; }

    double level() const { return m_source.volumeLevel(); }
    bool isShown() const { return m_isShown; }

Q_SIGNALS:
    void levelChanged();
    void isShownChanged();

private:
    void show();

    dispatch::Dispatcher& m_dispatcher;
    MusicSource& m_source;
    bool m_isAvailable = true;
    bool m_isShown = false;
    double m_beforeSilence = 0.5;
    dispatch::WorkItem m_end;
};

} // namespace tarnwick
