#pragma once

#include "controls/bar/VolumeScale.h"
#include "music/MusicSource.h"
#include "platform/dispatch/Dispatcher.h"
#include "players/MusicApplication.h"

#include <QObject>
#include <QPointF>
#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>
#include <optional>

namespace tarnwick {

/// What the transport bar does: hover, hiding, the guard of the commands, the playlists. Main thread only.
class TrackControls : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The display hands it in")

    /// Whether the pointer is over the bar.
    Q_PROPERTY(bool isHovered READ isHovered NOTIFY isHoveredChanged)
    Q_PROPERTY(bool showTrackControls READ showTrackControls WRITE setShowTrackControls NOTIFY
                   showTrackControlsChanged)
    /// The identifier of the button under the pointer; "" for none.
    Q_PROPERTY(QString hoveredButton READ hoveredButton NOTIFY hoveredButtonChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(bool isShuffleOn READ isShuffleOn NOTIFY isShuffleOnChanged)
    /// 0 to 1.
    Q_PROPERTY(double volumeLevel READ volumeLevel NOTIFY volumeLevelChanged)
    Q_PROPERTY(tarnwick::VolumeScale* volumeScale READ volumeScale CONSTANT)
    /// The window's width in points; sets the scale of everything in the bar.
    Q_PROPERTY(double windowWidth READ windowWidth WRITE setWindowWidth NOTIFY windowWidthChanged)
    /// 0.5 to 1.5, 1 at a width of 1200.
    Q_PROPERTY(double sizeScale READ sizeScale NOTIFY windowWidthChanged)
    /// The names in the picker, as the last fetch brought them.
    Q_PROPERTY(QStringList playlists READ playlists NOTIFY playlistsChanged)
    Q_PROPERTY(bool showPlaylistPicker READ showPlaylistPicker WRITE setShowPlaylistPicker NOTIFY
                   showPlaylistPickerChanged)
    /// The buttons whose action the player does not support, by identifier. They still answer.
    Q_PROPERTY(QStringList dimmedButtons READ dimmedButtons NOTIFY dimmedButtonsChanged)
    /// What a script wants to tell just now; "" for nothing.
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)

public:
    static constexpr dispatch::Duration guardTime = std::chrono::milliseconds(200);
    static constexpr dispatch::Duration hideDelay = std::chrono::seconds(1);
    /// How long a finger's tap shows the bar.
    static constexpr dispatch::Duration touchTime = std::chrono::seconds(4);
    /// How long the keyboard's focus, or a pointer that rests, keeps the bar.
    static constexpr dispatch::Duration restTime = std::chrono::seconds(10);
    static constexpr dispatch::Duration graceOfSlider = std::chrono::seconds(1);
    static constexpr dispatch::Duration messageTime = std::chrono::seconds(4);

    /// What the display gives the bar; everything must outlive it.
    struct Parts {
        dispatch::Dispatcher& dispatcher;
        MusicSource& musicSource;
        std::function<void()> onPrevious;
        std::function<void()> onPlayPause;
        std::function<void()> onNext;
        std::function<void()> onToggleShuffle;
        std::function<void()> openPreferences;
    };

    explicit TrackControls(Parts parts);

    /// Drops the hide that is pending.
    ~TrackControls() override;

    /// A click on the button "previous", "playPause", "next", "shuffle", "playlist" or "preferences".
    Q_INVOKABLE void press(const QString& button);

    Q_INVOKABLE void pointerEntered(const QString& button);
    /// The pointer is not over that button any more; another one may have been told of first.
    Q_INVOKABLE void pointerLeft(const QString& button);

    /// The pointer is at a place of the window.
    Q_INVOKABLE void pointerMoved(const QPointF& place);

    /// Whether a press on the slider is meant for it: within a second after the row has moved under a pointer
    /// that has not it was meant for what was there before.
    Q_INVOKABLE bool takesPressOfSlider() const;

    /// The pointer comes over the bar, or leaves it.
    Q_INVOKABLE void enterBar();
    Q_INVOKABLE void leaveBar();

    /// A finger comes down on the bar, or goes.
    Q_INVOKABLE void touch(bool isDown);

    /// Shows the bar for a while, for a finger that cannot point at it.
    Q_INVOKABLE void callUp();

    /// Drops the hide that is pending.
    void cancelHiding() { m_hideControlsWorkItem.cancel(); }

    /// The keyboard's focus comes into the bar, which shows it as long as it is there, or leaves it.
    Q_INVOKABLE void setFocused(bool isFocused);
    /// Something is done with the focus in the bar. Where that is long ago, `focusRested` is emitted.
    Q_INVOKABLE void useByKeys() { awaitRest(); }

    /// `level` is a fraction; beyond 0 to 1 it means the end.
    Q_INVOKABLE void setVolume(double level);

    /// Plays a playlist and closes the picker.
    Q_INVOKABLE void choosePlaylist(const QString& name);

    void setShowTrackControls(bool isShown);
    void setShowPlaylistPicker(bool isShown);
    void setWindowWidth(double width);

    /// Shows `message` above the bar for a while, in place of one that is still there.
    void showMessage(const QString& message);

    /// What the player can do, for the dimming.
    void setCapabilities(const players::Capabilities& capabilities);

    VolumeScale* volumeScale() { return &m_volumeScale; }
    bool isHovered() const { return m_isHovered; }
    bool showTrackControls() const { return m_showTrackControls; }
    const QString& hoveredButton() const { return m_hoveredButton; }
    bool isPlaying() const { return m_parts.musicSource.isPlaying(); }
    bool isShuffleOn() const { return m_parts.musicSource.isShuffleOn(); }
    double volumeLevel() const { return m_parts.musicSource.volumeLevel(); }
    double windowWidth() const { return m_windowWidth; }
    double sizeScale() const;
    const QStringList& playlists() const { return m_playlists; }
    bool showPlaylistPicker() const { return m_showPlaylistPicker; }
    const QStringList& dimmedButtons() const { return m_dimmedButtons; }
    const QString& message() const { return m_message; }

Q_SIGNALS:
    void isHoveredChanged();
    void showTrackControlsChanged();
    void hoveredButtonChanged();
    void isPlayingChanged();
    void isShuffleOnChanged();
    void volumeLevelChanged();
    void windowWidthChanged();
    void playlistsChanged();
    void showPlaylistPickerChanged();
    void dimmedButtonsChanged();
    void messageChanged();
    /// The focus has been in the bar for long and nothing was done with it: it is to be given back.
    void focusRested();

private:
    void runGuarded(const std::function<void()>& command);
    void fetchPlaylists();
    void startHideTimer();
    void hideAfter(dispatch::Duration delay);
    void awaitRest();

    template <typename Type>
    void assign(Type& field, const Type& value, void (TrackControls::*changed)()) {
        if (field == value)
            return;
        field = value;
        Q_EMIT(this->*changed)();
    }

    const Parts m_parts;
    VolumeScale m_volumeScale;
    bool m_isHovered = false;
    bool m_isFocused = false;
    bool m_isTouched = false;  ///< a finger was there last, and not a pointer
    dispatch::WorkItem m_rest; ///< of the focus, or of the pointer over the bar
    bool m_wasPlaying = false;
    bool m_showTrackControls = false;
    QString m_hoveredButton;
    dispatch::WorkItem m_hideControlsWorkItem;
    bool m_isCommandInProgress = false;
    std::optional<dispatch::Instant> m_rowMovedAt; ///< none once the pointer has moved since
    QPointF m_pointer;
    QStringList m_playlists;
    bool m_showPlaylistPicker = false;
    QStringList m_dimmedButtons;
    QString m_message;
    dispatch::WorkItem m_messageEnd;
    double m_windowWidth = 1200;
};

} // namespace tarnwick
