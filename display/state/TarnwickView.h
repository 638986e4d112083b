#pragma once

#include "controls/bar/TrackControls.h"
#include "display/gestures/Gestures.h"
#include "display/pictures/FolderPicture.h"
#include "display/pictures/Picture.h"
#include "music/MusicSource.h"
#include "platform/animation/Clock.h"
#include "platform/animation/Transaction.h"
#include "platform/fonts/FontRegistry.h"
#include "platform/power/PowerManager.h"
#include "platform/windows/Windows.h"
#include "settings/ScreenSaverManager.h"
#include "settings/Settings.h"
#include "visuals/BackgroundManager.h"
#include "visuals/RotatingCDManager.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSizeF>
#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

/// The state of the display and what it does when something changes. Main thread only.
///
/// Everything that the looks need beside the model's facts and the preferences is a property here.
class TarnwickView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one, and it is handed in")

    Q_PROPERTY(QVariant musicSource READ musicSourceVariant CONSTANT)
    Q_PROPERTY(tarnwick::Settings* settings READ settings CONSTANT)
    Q_PROPERTY(QVariant backgroundManager READ backgroundManagerVariant CONSTANT)
    Q_PROPERTY(QVariant rotatingCDManager READ rotatingCDManagerVariant CONSTANT)
    Q_PROPERTY(QVariant transaction READ transactionVariant CONSTANT)
    /// What the disc turns by; null for the system's clock.
    Q_PROPERTY(tarnwick::animation::Clock* clock READ clock CONSTANT)
    /// The cover; none when there is none.
    Q_PROPERTY(tarnwick::Picture artwork READ artwork NOTIFY artworkChanged)
    /// The disc that the rotating one shows, for a still copy of it.
    Q_PROPERTY(tarnwick::Picture record READ record NOTIFY recordChanged)
    /// Takes the place of the record; none for most albums.
    Q_PROPERTY(tarnwick::Picture cassetteImage READ cassetteImage NOTIFY cassetteImageChanged)
    Q_PROPERTY(tarnwick::Picture noPicture READ noPicture CONSTANT)
    /// The colours behind everything, top to bottom.
    Q_PROPERTY(QList<QColor> paintedColors READ paintedColors NOTIFY paintedColorsChanged)
    /// The main window is in full screen.
    Q_PROPERTY(bool isFullscreen READ isFullscreen NOTIFY isFullscreenChanged)
    /// The transport bar.
    Q_PROPERTY(tarnwick::TrackControls* controls READ controls CONSTANT)
    Q_PROPERTY(tarnwick::Gestures* gestures READ gestures CONSTANT)
    /// The turn of the cover about its vertical axis, degrees; grows by 360 a spin.
    Q_PROPERTY(double rotationAngle READ rotationAngle NOTIFY rotationAngleChanged)
    /// The back of the cover, the track list, is shown.
    Q_PROPERTY(bool isFlipped READ isFlipped NOTIFY isFlippedChanged)
    /// The record is slid out beside the cover.
    Q_PROPERTY(bool isCDVisible READ isCDVisible NOTIFY isCDVisibleChanged)
    /// The clock: "HH:mm" at first, then "HH:mm:ss" every second.
    Q_PROPERTY(QString currentTime READ currentTime NOTIFY currentTimeChanged)
    /// The row that the keys have chosen, an index into all titles, disc after disc; -1 for none.
    Q_PROPERTY(int selectedTrackIndex READ selectedTrackIndexOrNone NOTIFY selectedTrackIndexChanged)
    /// A change rebuilds the rows of the track list.
    Q_PROPERTY(int tracklistUpdateKey READ tracklistUpdateKey NOTIFY tracklistUpdateKeyChanged)
    /// Turns, spins and slides are replaced by fades.
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY reducedMotionChanged)
    /// Else nothing moves gradually: what changes is at its end at once.
    Q_PROPERTY(bool canBeSeen READ canBeSeen NOTIFY canBeSeenChanged)
    /// Whether the player is known to play a title of the list; rows that it does not play do not light up.
    Q_PROPERTY(bool canPlayTitles READ canPlayTitles NOTIFY canPlayTitlesChanged)

public:
    /// What the view is made of; everything must outlive it.
    struct Parts {
        dispatch::Dispatcher& dispatcher;
        MusicSource& musicSource;
        Settings& settings;
        BackgroundManager& backgroundManager;
        windows::WindowSystem& windows;
        images::ImageStore& images;
        power::PowerManager* power = nullptr; ///< null: the display is not kept awake
        animation::Clock* clock = nullptr;    ///< what the disc turns by; null: the system's clock
        const Catalogue& catalogue = Catalogue::shared();
        const fonts::FontRegistry* fonts = nullptr; ///< null: texts are in the system font
        RandomIndex randomIndex = systemRandomIndex();
        std::function<QDateTime()> wallClock = [] { return QDateTime::currentDateTime(); };
        LogLine log = [](const QString&) {};
        /// Each draws the name of an imported font; empty where there are none to draw from.
        std::function<QString()> randomClockFontName{};
        std::function<QString()> randomTrackInfoFontName{};
        /// Makes the cover the application's icon, or puts back its own.
        std::function<void(const std::optional<images::Image>& cover, bool enabled)> applyDockIcon{};
        std::function<void()> openPreferences = [] {};
    };

    explicit TarnwickView(Parts parts);
    ~TarnwickView() override;

    /// The first time the view is shown: asks for everything, starts the polls, the timers and the clock,
    /// and keeps the display awake.
    void appear();

    /// Lets the display sleep again, and leaves the bar as it is. The clock goes on.
    void disappear();

    /// Chooses the picture of the record anew: one that lies in the album's folder, else as the preferences
    /// say. A disc drawn at random is drawn anew only when `force`d. The folder is looked at off the main
    /// thread, so what it holds shows a little later; until then nothing changes.
    void refreshRecordImage(bool force);

    /// Whether nothing is being looked for that belongs to what plays: its record, its colours.
    bool hasFoundEverything() const;

    /// The window's size in points; looks at full screen.
    Q_INVOKABLE void setWindowSize(const QSizeF& size);

    /// Turns the cover over and asks for the album's tracks, or turns it back.
    Q_INVOKABLE void tapCover();

    /// Answers a key by its hardware code; others are ignored.
    Q_INVOKABLE void onKeyDown(int keyCode);

    /// Plays a title of the album, as a tap on its row does.
    Q_INVOKABLE void playTrack(const QString& title) { m_parts.musicSource.playTrack(title); }

    /// The pointer entered row `row` of a disc, or left it when `row` is -1.
    Q_INVOKABLE void hoverTrack(int disc, int row);

    /// The rows that the pointer was over have gone.
    void leaveTracks();

    /// The row of a disc under the pointer; -1 for none.
    Q_INVOKABLE int hoveredTrack(int disc) const { return m_hoveringTracks.value(disc, -1); }

    /// The present date and time, as an Italian writes it; `pattern` as "HH:mm" or "dd MMM yyyy".
    Q_INVOKABLE QString formattedNow(const QString& pattern) const;

    /// Tells `line` on standard output.
    Q_INVOKABLE void log(const QString& line) const { m_parts.log(line); }

    /// A picture of the catalogue; none when it is missing.
    Q_INVOKABLE tarnwick::Picture namedPicture(const QString& name) const {
        return m_parts.catalogue.image(name);
    }

    /// Whether the application's first window is in full screen; false without one.
    Q_INVOKABLE bool isWindowFullScreen() const;

    void setReducedMotion(bool reduced);

    bool canPlayTitles() const { return m_canPlayTitles; }
    /// What the player can do.
    void setCapabilities(const players::Capabilities& can);

    MusicSource& musicSource() const { return m_parts.musicSource; }
    Settings* settings() const { return &m_parts.settings; }
    BackgroundManager& backgroundManager() const { return m_parts.backgroundManager; }
    animation::Transaction& transaction() { return m_transaction; }

    RotatingCDManager& rotatingCDManager() { return m_rotatingCDManager; }
    animation::Clock* clock() const { return m_parts.clock; }

    const fonts::FontRegistry* fonts() const { return m_parts.fonts; }

    Picture artwork() const { return m_parts.musicSource.currentAlbumArtwork(); }
    Picture noPicture() const { return {}; }
    Picture record() const { return Picture(m_rotatingCDManager.cdImage()); }
    Picture cassetteImage() const { return m_cassetteImage; }
    const DiscImage& cdImage() const { return m_cdImage; }
    const DiscImage& currentRandomImage() const { return m_currentRandomImage; }
    /// To be painted behind everything, from top to bottom.
    const QList<QColor>& paintedColors() const { return m_paintedColors; }
    bool isFullscreen() const { return m_isFullscreen; }
    TrackControls* controls() { return &m_controls; }
    Gestures* gestures() { return &m_gestures; }
    double rotationAngle() const { return m_rotationAngle; }
    bool isFlipped() const { return m_isFlipped; }
    bool isCDVisible() const { return m_isCDVisible; }
    const QString& currentTime() const { return m_currentTime; }
    const QHash<int, int>& hoveringTracks() const { return m_hoveringTracks; }
    std::optional<int> selectedTrackIndex() const { return m_selectedTrackIndex; }
    int tracklistUpdateKey() const { return m_tracklistUpdateKey; }
    bool reducedMotion() const { return m_reducedMotion; }
    bool canBeSeen() const;
    const ScreenSaverManager& screenSaverManager() const { return m_screenSaverManager; }

Q_SIGNALS:
    /// A record has been found or chosen, another one or not.
    void found();
    void artworkChanged();
    void recordChanged();
    void cassetteImageChanged();
    void paintedColorsChanged();
    void isFullscreenChanged();
    void rotationAngleChanged();
    void isFlippedChanged();
    void isCDVisibleChanged();
    void currentTimeChanged();
    void hoveringTracksChanged();
    void selectedTrackIndexChanged();
    void tracklistUpdateKeyChanged();
    void reducedMotionChanged();
    void canBeSeenChanged();
    void canPlayTitlesChanged();

private:
    /// What the choice of a record depends on, as it was when the choice was asked for.
    struct RecordRequest {
        bool force;
        bool isRandom;
        bool isGenerated;
        QString defaultChoice;
        std::optional<images::Image> cover;
    };

    template <typename T>
    void assign(T& field, const std::type_identity_t<T>& value, void (TarnwickView::*changed)()) {
        if (field == value)
            return;
        field = value;
        Q_EMIT(this->*changed)();
    }

    TrackControls::Parts controlsParts();
    void watchTheModel();
    void watchTheSettings();
    void trackChanged();
    void albumChanged();
    void slideRecordAwayAndBack();
    void drawRandomFonts();
    void applyBackground();
    bool awaitsCover();
    void takeColours();
    void applyDockIcon();
    void takeFolderPicture(const FolderPicture& found);
    void chooseRecord(const RecordRequest& request);
    DiscImage generatedRecord(const RecordRequest& request, const QString& tag) const;
    void pushRecordImage();
    void startClock();
    void considerFullScreen();
    void turnBackFromNothing(int silence);
    void setFlipped(bool flipped);
    void select(std::optional<int> index);
    void confirmSelection();
    QStringList flattenedTitles() const;

    /// Runs `task` on the main queue after `delay`, unless the view has gone.
    void later(dispatch::Duration delay, dispatch::Task task);

    QVariant musicSourceVariant() const { return QVariant::fromValue<QObject*>(&m_parts.musicSource); }
    QVariant backgroundManagerVariant() const {
        return QVariant::fromValue<QObject*>(&m_parts.backgroundManager);
    }
    QVariant rotatingCDManagerVariant() { return QVariant::fromValue<QObject*>(&m_rotatingCDManager); }
    QVariant transactionVariant() { return QVariant::fromValue<QObject*>(&m_transaction); }
    int selectedTrackIndexOrNone() const { return m_selectedTrackIndex.value_or(-1); }

    const Parts m_parts;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    animation::Transaction m_transaction;
    ScreenSaverManager m_screenSaverManager;
    RotatingCDManager m_rotatingCDManager;
    TrackControls m_controls;
    Gestures m_gestures;
    std::unique_ptr<dispatch::TimerSource> m_clockTimer;

    DiscImage m_cdImage;
    DiscImage m_currentRandomImage;
    std::optional<images::Image> m_cassetteImage;
    QString m_recordAlbum; // the identity of the one whose record was asked for last
    QString m_previousAlbumIdentity;
    quint64 m_recordOrder = 0;     // of the choice that was asked for last
    bool m_looksForRecord = false; // in the folder
    bool m_recordIsForced = false; // by a choice that was overtaken
    QList<QColor> m_paintedColors;
    bool m_hasCoversColours = false;                      // those of a cover, and not of none
    std::optional<dispatch::Instant> m_withoutCoverSince; // by the dispatcher's clock
    bool m_isFullscreen = false;
    bool m_canPlayTitles = true;
    double m_rotationAngle = 0;
    bool m_isFlipped = false;
    int m_silences = 0; // counts up when music begins and when it ends
    bool m_isCDVisible = true;
    QString m_currentTime;
    QHash<int, int> m_hoveringTracks; // by disc; a disc without a hovered row has no entry
    std::optional<int> m_selectedTrackIndex;
    int m_tracklistUpdateKey = 0;
    bool m_reducedMotion = false;
};

} // namespace tarnwick
