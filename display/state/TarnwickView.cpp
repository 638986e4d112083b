#include "display/state/TarnwickView.h"

#include "platform/windows/KeyCodes.h"

#include <QLocale>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

constexpr auto clockInterval = 1s;
constexpr auto turnDuration = 1000ms;
constexpr auto slideDuration = 700ms;
constexpr auto albumWriteBackDelay = 500ms;
constexpr auto emptyListPatience = 10s;
constexpr auto hoverDuration = 200ms;
constexpr auto discChoiceDelay = 200ms;
constexpr double fullTurn = 360;

} // namespace

TarnwickView::TarnwickView(Parts parts)
    : m_parts(std::move(parts)), m_screenSaverManager(m_parts.power),
      m_rotatingCDManager(m_parts.catalogue, m_parts.randomIndex, m_parts.log), m_controls(controlsParts()),
      m_gestures({m_parts.musicSource, m_controls, m_parts.windows}) {
    watchTheModel();
    watchTheSettings();
}

TarnwickView::~TarnwickView() = default;

TrackControls::Parts TarnwickView::controlsParts() {
    MusicSource& source = m_parts.musicSource;
    return {.dispatcher = m_parts.dispatcher,
            .musicSource = source,
            .onPrevious = [&source] { source.previousTrack(); },
            .onPlayPause = [&source] { source.playPause(); },
            .onNext = [&source] { source.nextTrack(); },
            .onToggleShuffle = [&source] { source.toggleShuffle(); },
            .openPreferences = m_parts.openPreferences};
}

void TarnwickView::appear() {
    MusicSource& source = m_parts.musicSource;
    source.fetchNowPlaying();
    source.fetchCurrentPlaylistName();
    source.syncShuffleState();
    source.startUpdating();
    source.startElapsedTimeTimer();
    applyBackground();
    refreshRecordImage(false);
    m_screenSaverManager.preventSleep();
    assign(m_currentTime, formattedNow(QStringLiteral("HH:mm")), &TarnwickView::currentTimeChanged);
    startClock();
    if (const windows::Window* window = m_parts.windows.mainWindow())
        connect(window, &windows::Window::canBeSeenChanged, this, &TarnwickView::canBeSeenChanged);
    if (const windows::Window* window =
            m_parts.windows.firstWindow()) // whose state may change and not its size
        connect(window, &windows::Window::didResize, this, &TarnwickView::considerFullScreen);
    Q_EMIT canBeSeenChanged();
}

void TarnwickView::disappear() {
    m_controls.cancelHiding();
    m_screenSaverManager.allowSleep();
}

void TarnwickView::watchTheModel() {
    // The source outlives the view, so each watcher asks whether the view is still there.
    MusicSource& source = m_parts.musicSource;
    ChangePass& changes = source.changes();
    const auto watch = [&](auto field, auto handler) {
        changes.watch([&source, field] { return (source.*field)(); },
                      [weak = std::weak_ptr(m_alive), handler](const auto&, const auto& now) {
                          if (!weak.expired())
                              handler(now);
                      });
    };
    watch(&MusicSource::currentTrackTitle, [this](const QString&) { trackChanged(); });
    watch(&MusicSource::isPlaying, [this](bool isPlaying) {
        m_rotatingCDManager.updatePlayback(isPlaying, m_parts.settings.rotateCDDuringPlayback());
    });
    watch(&MusicSource::isPlayerActive, [this](bool isActive) {
        const int silence = ++m_silences;
        if (!isActive)
            later(emptyListPatience, [this, silence] { turnBackFromNothing(silence); });
    });
    watch(&MusicSource::currentDiscNumber, [this](const auto&) { refreshRecordImage(true); });
    watch(&MusicSource::currentAlbumArtwork, [this](const auto&) {
        Q_EMIT artworkChanged();
        applyBackground();
        applyDockIcon();
        if (m_parts.settings.useGeneratedCD()) // a cover may come later than its album
            refreshRecordImage(false);
    });
}

void TarnwickView::watchTheSettings() {
    connect(&m_parts.settings, &Settings::backgroundOptionChanged, this, [this] {
        m_hasCoversColours = false; // whose colours shall not stay
        applyBackground();
    });
    const Settings* settings = &m_parts.settings;
    connect(settings, &Settings::rotateCDDuringPlaybackChanged, this, [this, settings] {
        m_rotatingCDManager.updatePlayback(m_parts.musicSource.isPlaying(),
                                           settings->rotateCDDuringPlayback());
    });
    connect(settings, &Settings::randomRotationEnabledChanged, this, [this, settings] {
        if (!settings->randomRotationEnabled())
            refreshRecordImage(true);
    });
    connect(settings, &Settings::defaultCDImageChoiceChanged, this,
            [this] { later(discChoiceDelay, [this] { refreshRecordImage(true); }); });
    connect(settings, &Settings::useGeneratedCDChanged, this, [this] { refreshRecordImage(false); });
    connect(&m_rotatingCDManager, &RotatingCDManager::cdImageChanged, this, &TarnwickView::recordChanged);
    connect(&m_parts.windows, &windows::WindowSystem::updateAppIcon, this, [this] { applyDockIcon(); });
    connect(&m_parts.backgroundManager, &BackgroundManager::published, this, &TarnwickView::takeColours);
    takeColours();
}

void TarnwickView::trackChanged() {
    MusicSource& source = m_parts.musicSource;
    const QString previous = source.previousAlbumTitle().value_or(QString());
    const QString album = source.currentAlbumName().value_or(QString());
    if (m_parts.settings.backgroundOption() == BackgroundOption::Random)
        m_parts.backgroundManager.lastRandomChoice.reset();
    applyBackground();
    drawRandomFonts();
    if (previous != album || (album.isEmpty() && m_previousAlbumIdentity != source.albumIdentity()))
        albumChanged();
    else if (m_recordAlbum !=
             source.albumIdentity()) // there and back before what was shown had been written down
        refreshRecordImage(true);
    later(albumWriteBackDelay, [this, name = source.currentAlbumName(), identity = source.albumIdentity()] {
        m_transaction.withoutAnimation([&] { m_parts.musicSource.setPreviousAlbumTitle(name); });
        m_previousAlbumIdentity = identity;
    });
}

void TarnwickView::albumChanged() {
    m_transaction.animate(slideDuration, [this] {
        if (m_parts.settings.enableFlip())
            m_transaction.animate(turnDuration, [this] {
                assign(m_rotationAngle, m_rotationAngle + fullTurn, &TarnwickView::rotationAngleChanged);
            });
    });
    refreshRecordImage(true);
    applyDockIcon();
    if (m_parts.settings.enableCDAnimation()) {
        slideRecordAwayAndBack();
        return;
    }
    assign(m_isCDVisible, true, &TarnwickView::isCDVisibleChanged);
    later(0s, [this] {
        assign(m_tracklistUpdateKey, m_tracklistUpdateKey + 1, &TarnwickView::tracklistUpdateKeyChanged);
        m_parts.musicSource.fetchTracksByDisc();
    });
}

void TarnwickView::slideRecordAwayAndBack() {
    const auto slide = [this](bool visible) {
        m_transaction.animate(slideDuration, [this, visible] {
            assign(m_isCDVisible, visible, &TarnwickView::isCDVisibleChanged);
        });
    };
    later(0s, [this, slide] {
        slide(false);
        later(slideDuration, [slide] { slide(true); });
    });
}

void TarnwickView::drawRandomFonts() {
    Settings& settings = m_parts.settings;
    if (settings.randomClockFontEnabled() && m_parts.randomClockFontName)
        settings.setSelectedClockFont(m_parts.randomClockFontName());
    if (settings.randomTrackInfoFontEnabled() && m_parts.randomTrackInfoFontName)
        settings.setSelectedTrackInfoFont(m_parts.randomTrackInfoFontName());
}

void TarnwickView::applyDockIcon() {
    if (m_parts.settings.autoUpdateAppIcon() && m_parts.applyDockIcon)
        m_parts.applyDockIcon(m_parts.musicSource.currentAlbumArtwork(), true);
}

void TarnwickView::startClock() {
    // A timer's first tick comes at once, a clock's after the first second.
    m_clockTimer =
        m_parts.dispatcher.makeTimer(m_parts.dispatcher.mainQueue(), clockInterval,
                                     [this, alive = std::weak_ptr(m_alive), isFirst = true]() mutable {
                                         if (std::exchange(isFirst, false) || alive.expired())
                                             return;
                                         assign(m_currentTime, formattedNow(QStringLiteral("HH:mm:ss")),
                                                &TarnwickView::currentTimeChanged);
                                     });
}

void TarnwickView::setWindowSize(const QSizeF&) { considerFullScreen(); }

void TarnwickView::considerFullScreen() {
    assign(m_isFullscreen, isWindowFullScreen(), &TarnwickView::isFullscreenChanged);
}

void TarnwickView::tapCover() {
    m_transaction.animate(turnDuration, [this] { setFlipped(!m_isFlipped); });
    if (m_isFlipped)
        m_parts.musicSource.fetchTracksByDisc();
}

/// The list has nothing to list, and the logo lies under it.
void TarnwickView::turnBackFromNothing(int silence) {
    if (silence != m_silences || m_parts.musicSource.isPlayerActive() || !m_isFlipped)
        return;
    m_transaction.animate(turnDuration, [this] { setFlipped(false); });
}

void TarnwickView::onKeyDown(int keyCode) {
    const auto titles = flattenedTitles().size();
    m_transaction.animate([&] {
        switch (keyCode) {
        case windows::ReturnKey:
            if (m_isFlipped) {
                confirmSelection();
                break;
            }
            setFlipped(true);
            m_parts.musicSource.fetchTracksByDisc();
            break;
        case windows::EscapeKey:
            if (m_isFlipped)
                setFlipped(false);
            else if (isWindowFullScreen())
                m_parts.windows.firstWindow()->toggleFullScreen();
            break;
        case windows::DownArrowKey:
            if (m_isFlipped && titles > 0)
                select(m_selectedTrackIndex
                           ? std::max(*m_selectedTrackIndex,
                                      std::min(*m_selectedTrackIndex + 1, static_cast<int>(titles) - 1))
                           : 0);
            break;
        case windows::UpArrowKey:
            if (m_isFlipped && m_selectedTrackIndex && *m_selectedTrackIndex >= 1)
                select(*m_selectedTrackIndex - 1);
            break;
        default:
            break;
        }
    });
}

void TarnwickView::confirmSelection() {
    const QStringList titles = flattenedTitles();
    if (m_selectedTrackIndex && *m_selectedTrackIndex < titles.size())
        playTrack(titles.at(*m_selectedTrackIndex));
    select(std::nullopt);
    setFlipped(false);
}

QStringList TarnwickView::flattenedTitles() const {
    QStringList titles;
    if (!m_parts.musicSource.hasTracksOfCurrentAlbum())
        return titles; // the rows are not shown either
    for (const DiscTrack& disc : m_parts.musicSource.tracksByDisc())
        titles += disc.tracks;
    return titles;
}

void TarnwickView::hoverTrack(int disc, int row) {
    if (m_hoveringTracks.value(disc, -1) == row)
        return;
    m_transaction.animate(hoverDuration, [&] {
        if (row < 0)
            m_hoveringTracks.remove(disc);
        else
            m_hoveringTracks.insert(disc, row);
        Q_EMIT hoveringTracksChanged();
    });
}

void TarnwickView::leaveTracks() { assign(m_hoveringTracks, {}, &TarnwickView::hoveringTracksChanged); }

QString TarnwickView::formattedNow(const QString& pattern) const {
    return QLocale(QLocale::Italian, QLocale::Italy).toString(m_parts.wallClock(), pattern);
}

bool TarnwickView::isWindowFullScreen() const {
    const windows::Window* window = m_parts.windows.firstWindow();
    return window && window->isFullScreen();
}

bool TarnwickView::canBeSeen() const {
    const windows::Window* window = m_parts.windows.mainWindow();
    return !window || window->canBeSeen();
}

void TarnwickView::setReducedMotion(bool reduced) {
    assign(m_reducedMotion, reduced, &TarnwickView::reducedMotionChanged);
}

void TarnwickView::setCapabilities(const players::Capabilities& can) {
    assign(m_canPlayTitles, can.canOpenTitle, &TarnwickView::canPlayTitlesChanged);
    m_gestures.setCanSeek(can.canSeek);
}

void TarnwickView::setFlipped(bool flipped) {
    if (!flipped)
        leaveTracks();
    assign(m_isFlipped, flipped, &TarnwickView::isFlippedChanged);
}

void TarnwickView::select(std::optional<int> index) {
    assign(m_selectedTrackIndex, index, &TarnwickView::selectedTrackIndexChanged);
}

void TarnwickView::later(dispatch::Duration delay, dispatch::Task task) {
    m_parts.dispatcher.asyncAfter(m_parts.dispatcher.mainQueue(), delay,
                                  [alive = std::weak_ptr(m_alive), task = std::move(task)] {
                                      if (!alive.expired())
                                          task();
                                  });
}

} // namespace tarnwick
