#pragma once

#include "controls/bar/TrackControls.h"
#include "music/MusicSource.h"
#include "platform/windows/Windows.h"

#include <QEventPoint>
#include <QObject>
#include <QPointF>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tarnwick {

/// What fingers and the pointer mean on the display itself, beside its controls. Main thread only.
class Gestures : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view has it")

    /// How far a key, or a step of assistive technology, goes in the track, seconds.
    Q_PROPERTY(double seekStep READ stepOfSeek CONSTANT)
    /// Whether the player goes to a place in the track.
    Q_PROPERTY(bool canSeek READ canSeek NOTIFY canSeekChanged)

public:
    static constexpr double seekStep = 10;

    /// Everything must outlive the gestures.
    struct Parts {
        MusicSource& musicSource;
        TrackControls& controls;
        windows::WindowSystem& windows;
    };

    explicit Gestures(const Parts& parts) : m_parts(parts) {}

    /// Whether what was pressed at one place of the window and let go at another has stayed, as a tap does.
    Q_INVOKABLE static bool isStill(const QPointF& pressed, const QPointF& released);

    /// A finger's tap where nothing lies, `down` of the way from the top to the bottom. In the lower quarter
    /// it calls the bar up; whether it did.
    Q_INVOKABLE bool callBar(double down);

    /// `finger` lets the front of the cover go, `across` of its width to the right of where it took it and
    /// `rested` ms after it moved last. Far or fast enough it asks for the next track (to the left) or the
    /// previous one (to the right): -1 or 1, else 0, also when the finger was taken away. `point` is the
    /// pixels of a point.
    Q_INVOKABLE int swipeCover(const QEventPoint& finger, double across, double rested, double point);

    /// Goes forward in the track by so many seconds, or back.
    Q_INVOKABLE void seekBy(double seconds);

    /// Plays on from there, a fraction of the track.
    Q_INVOKABLE void seekTo(double fraction);

    Q_INVOKABLE void toggleFullScreen();

    double stepOfSeek() const { return seekStep; }
    bool canSeek() const { return m_canSeek; }
    void setCanSeek(bool can);

Q_SIGNALS:
    void canSeekChanged();

private:
    const Parts m_parts;
    bool m_canSeek = false;
};

} // namespace tarnwick
