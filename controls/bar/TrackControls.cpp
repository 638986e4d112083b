#include "controls/bar/TrackControls.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

TrackControls::TrackControls(Parts parts)
    : m_parts(std::move(parts)), m_volumeScale(m_parts.dispatcher, m_parts.musicSource) {
    const MusicSource& source = m_parts.musicSource;
    connect(&source, &MusicSource::isPlayingChanged, this, [this] {
        if (const bool isPlaying = this->isPlaying(); std::exchange(m_wasPlaying, isPlaying) != isPlaying)
            m_rowMovedAt = m_parts.dispatcher.now(); // it stands higher while nothing plays
        Q_EMIT isPlayingChanged();
    });
    m_wasPlaying = isPlaying();
    connect(&source, &MusicSource::isShuffleOnChanged, this, &TrackControls::isShuffleOnChanged);
    connect(&source, &MusicSource::volumeLevelChanged, this, &TrackControls::volumeLevelChanged);
}

TrackControls::~TrackControls() {
    m_hideControlsWorkItem.cancel();
    m_rest.cancel();
}

void TrackControls::press(const QString& button) {
    awaitRest();
    if (button == u"previous") {
        runGuarded(m_parts.onPrevious);
    } else if (button == u"playPause") {
        runGuarded(m_parts.onPlayPause);
    } else if (button == u"next") {
        runGuarded(m_parts.onNext);
    } else if (button == u"shuffle") {
        runGuarded(m_parts.onToggleShuffle);
    } else if (button == u"playlist") {
        fetchPlaylists();
        setShowPlaylistPicker(!m_showPlaylistPicker);
    } else if (button == u"preferences") {
        m_parts.openPreferences();
    }
}

/// At most one command in each 0.2 s, whichever button it comes from.
void TrackControls::runGuarded(const std::function<void()>& command) {
    if (m_isCommandInProgress)
        return;
    m_isCommandInProgress = true;
    m_parts.dispatcher.asyncAfter(m_parts.dispatcher.mainQueue(), guardTime, [self = QPointer(this)] {
        if (self)
            self->m_isCommandInProgress = false;
    });
    command();
}

void TrackControls::fetchPlaylists() {
    auto& dispatcher = m_parts.dispatcher;
    auto& queue = dispatcher.globalQueue(dispatch::QualityOfService::Background);
    queue.async([self = QPointer(this), source = MusicSource::shared(), &main = dispatcher.mainQueue()] {
        main.async([self, names = source ? source->fetchPlaylists() : QStringList()] {
            if (self)
                self->assign(self->m_playlists, names, &TrackControls::playlistsChanged);
        });
    });
}

void TrackControls::choosePlaylist(const QString& name) {
    m_parts.musicSource.playPlaylist(name);
    setShowPlaylistPicker(false);
}

void TrackControls::pointerEntered(const QString& button) {
    assign(m_hoveredButton, button, &TrackControls::hoveredButtonChanged);
}

void TrackControls::pointerLeft(const QString& button) {
    if (m_hoveredButton == button)
        assign(m_hoveredButton, QString(), &TrackControls::hoveredButtonChanged);
}

void TrackControls::pointerMoved(const QPointF& place) {
    constexpr double tremor = 2;
    if (std::hypot(place.x() - m_pointer.x(), place.y() - m_pointer.y()) <= tremor)
        return;
    m_pointer = place;
    m_rowMovedAt.reset();
    m_isTouched = false;
    if (m_isHovered)
        enterBar();
}

bool TrackControls::takesPressOfSlider() const {
    return !m_rowMovedAt || m_parts.dispatcher.now() - *m_rowMovedAt >= graceOfSlider;
}

void TrackControls::enterBar() {
    assign(m_isHovered, true, &TrackControls::isHoveredChanged);
    setShowTrackControls(true);
    m_hideControlsWorkItem.cancel();
    awaitRest();
}

void TrackControls::leaveBar() {
    assign(m_isHovered, false, &TrackControls::isHoveredChanged);
    startHideTimer();
}

void TrackControls::touch(bool isDown) {
    m_isTouched = true;
    if (isDown)
        m_hideControlsWorkItem.cancel();
    else
        startHideTimer();
}

void TrackControls::callUp() {
    m_isTouched = true;
    setShowTrackControls(true);
    startHideTimer();
}

void TrackControls::setFocused(bool isFocused) {
    if (m_isFocused == isFocused)
        return;
    m_isFocused = isFocused;
    if (isFocused) {
        setShowTrackControls(true);
        awaitRest();
    } else if (!m_isHovered) {
        startHideTimer();
    }
}

void TrackControls::startHideTimer() { hideAfter(m_isTouched ? touchTime : hideDelay); }

void TrackControls::hideAfter(dispatch::Duration delay) {
    m_hideControlsWorkItem.cancel();
    m_hideControlsWorkItem =
        m_parts.dispatcher.asyncAfter(m_parts.dispatcher.mainQueue(), delay, [self = QPointer(this)] {
            if (self && !self->m_isHovered && !self->m_isFocused)
                self->setShowTrackControls(false);
        });
}

/// What nobody moves for long does not keep the bar. A pointer that rests shows it again with its first move.
void TrackControls::awaitRest() {
    m_rest.cancel();
    m_rest = m_parts.dispatcher.asyncAfter(m_parts.dispatcher.mainQueue(), restTime, [self = QPointer(this)] {
        if (!self)
            return;
        if (self->m_isFocused)
            Q_EMIT self->focusRested();
        if (self->m_isHovered && !self->m_isFocused)
            self->setShowTrackControls(false);
    });
}

void TrackControls::setVolume(double level) { m_parts.musicSource.setVolume(std::clamp(level, 0.0, 1.0)); }

void TrackControls::setShowTrackControls(bool isShown) {
    assign(m_showTrackControls, isShown, &TrackControls::showTrackControlsChanged);
}

void TrackControls::setShowPlaylistPicker(bool isShown) {
    assign(m_showPlaylistPicker, isShown, &TrackControls::showPlaylistPickerChanged);
}

void TrackControls::setWindowWidth(double width) {
    assign(m_windowWidth, width, &TrackControls::windowWidthChanged);
}

void TrackControls::setCapabilities(const players::Capabilities& capabilities) {
    m_volumeScale.setAvailable(capabilities.canSetVolume);
    QStringList dimmed;
    const auto dimUnless = [&](bool isPossible, const QString& button) {
        if (!isPossible)
            dimmed.append(button);
    };
    dimUnless(capabilities.canGoPrevious, QStringLiteral("previous"));
    dimUnless(capabilities.canPlay, QStringLiteral("playPause"));
    dimUnless(capabilities.canGoNext, QStringLiteral("next"));
    dimUnless(capabilities.canShuffle, QStringLiteral("shuffle"));
    dimUnless(capabilities.hasPlaylists, QStringLiteral("playlist"));
    assign(m_dimmedButtons, dimmed, &TrackControls::dimmedButtonsChanged);
}

void TrackControls::showMessage(const QString& message) {
    assign(m_message, message, &TrackControls::messageChanged);
    m_messageEnd.cancel();
    m_messageEnd =
        m_parts.dispatcher.asyncAfter(m_parts.dispatcher.mainQueue(), messageTime, [self = QPointer(this)] {
            if (self)
                self->assign(self->m_message, QString(), &TrackControls::messageChanged);
        });
}

double TrackControls::sizeScale() const { return std::clamp(m_windowWidth / 1200, 0.5, 1.5); }

} // namespace tarnwick
