#include "app/program/PlayerKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace tarnwick {

PlayerKeys::PlayerKeys(MusicSource& source, TarnwickView& view) : m_source(source), m_view(view) {
    qGuiApp->installEventFilter(this);
}

PlayerKeys::~PlayerKeys() { qGuiApp->removeEventFilter(this); }

void PlayerKeys::press(QKeyCombination keys) {
    VolumeScale& volume = *m_view.controls()->volumeScale();
    switch (keys.toCombined()) {
    case Qt::Key_Space:
        playPause();
        break;
    case Qt::Key_PageUp:
        volume.change(VolumeScale::step);
        break;
    case Qt::Key_PageDown:
        volume.change(-VolumeScale::step);
        break;
    case QKeyCombination(Qt::SHIFT, Qt::Key_Left).toCombined():
        m_view.gestures()->seekBy(-Gestures::seekStep);
        break;
    case QKeyCombination(Qt::SHIFT, Qt::Key_Right).toCombined():
        m_view.gestures()->seekBy(Gestures::seekStep);
        break;
    default:
        break;
    }
}

bool PlayerKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWindowType())
        return false;
    return pressMediaKey(static_cast<const QKeyEvent&>(*event).key());
}

/// Whether it is one.
bool PlayerKeys::pressMediaKey(int key) {
    TrackControls& controls = *m_view.controls();
    VolumeScale& volume = *controls.volumeScale();
    switch (key) {
    case Qt::Key_MediaPlay:
        if (!m_source.isPlaying())
            playPause();
        return true;
    case Qt::Key_MediaPause:
        if (m_source.isPlaying())
            playPause();
        return true;
    case Qt::Key_MediaTogglePlayPause:
        playPause();
        return true;
    case Qt::Key_MediaStop:
        m_source.stop();
        return true;
    case Qt::Key_MediaNext:
        controls.press(QStringLiteral("next"));
        return true;
    case Qt::Key_MediaPrevious:
        controls.press(QStringLiteral("previous"));
        return true;
    case Qt::Key_AudioForward:
        m_view.gestures()->seekBy(Gestures::seekStep);
        return true;
    case Qt::Key_AudioRewind:
        m_view.gestures()->seekBy(-Gestures::seekStep);
        return true;
    case Qt::Key_VolumeUp:
        volume.change(VolumeScale::step);
        return true;
    case Qt::Key_VolumeDown:
        volume.change(-VolumeScale::step);
        return true;
    case Qt::Key_VolumeMute:
        volume.toggleMute();
        return true;
    default:
        return false;
    }
}

void PlayerKeys::playPause() { m_view.controls()->press(QStringLiteral("playPause")); }

} // namespace tarnwick
