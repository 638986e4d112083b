#pragma once

#include "music/ChangePass.h"
#include "music/DiscTrack.h"
#include "music/PublishedField.h"
#include "music/ScriptRunner.h"
#include "platform/dispatch/Dispatcher.h"
#include "platform/dispatch/SerialQueue.h"
#include "platform/images/ImageStore.h"
#include "players/MusicApplication.h"

#include <QObject>

#include <memory>
#include <optional>

namespace tarnwick {

/// What plays, as far as Music has told: the facts of the track, the state of the player, the album's
/// tracks. Publishes every change, and sends the commands.
///
/// Main thread only, except where an operation says otherwise: requests may run anywhere, and what they
/// bring is assigned by tasks of the main queue. After each such task the watchers of `changes` are told.
class MusicSource : public QObject {
    Q_OBJECT

    /// The title; "" when nothing plays.
    TARNWICK_PUBLISHED_FIELD(QString, currentTrackTitle, QStringLiteral("Titolo sconosciuto"))
    TARNWICK_PUBLISHED_FIELD(QString, currentArtistName, QStringLiteral("Artista sconosciuto"))
    /// None until the first refresh; "" when nothing plays.
    TARNWICK_PUBLISHED_FIELD(std::optional<QString>, currentAlbumName, std::nullopt)
    /// The cover, or "nocover" when the track has none; none when nothing plays.
    TARNWICK_PUBLISHED_FIELD(std::optional<images::Image>, currentAlbumArtwork, std::nullopt)
    /// Seconds.
    TARNWICK_PUBLISHED_FIELD(double, trackDuration, 0)
    /// Seconds; goes on by one every second while playing, and follows the player at every refresh.
    TARNWICK_PUBLISHED_FIELD(double, elapsedTime, 0)
    TARNWICK_PUBLISHED_FIELD(bool, isPlaying, false)
    TARNWICK_PUBLISHED_FIELD(bool, isPaused, false)
    TARNWICK_PUBLISHED_FIELD(bool, isShuffleOn, false)
    /// Playing or paused.
    TARNWICK_PUBLISHED_FIELD(bool, isPlayerActive, false)
    /// 0 when Music has no year; none when what it has is no number, or nothing plays.
    TARNWICK_PUBLISHED_FIELD(std::optional<qint64>, currentTrackYear, std::nullopt)
    /// 0 to 1.
    TARNWICK_PUBLISHED_FIELD(double, volumeLevel, 0.5)
    /// The grouping.
    TARNWICK_PUBLISHED_FIELD(QString, currentTrackGroup, QStringLiteral("Etichetta sconosciuta"))
    TARNWICK_PUBLISHED_FIELD(qint64, currentTrackNumber, 0)
    /// A code of the format classifier; "" when nothing plays.
    TARNWICK_PUBLISHED_FIELD(QString, currentTrackFormat, QStringLiteral("unknown"))
    TARNWICK_PUBLISHED_FIELD(QString, currentTrackComment, QStringLiteral("Nessun commento"))
    TARNWICK_PUBLISHED_FIELD(std::optional<qint64>, currentDiscNumber, std::nullopt)
    /// Only for an album of two discs or more.
    TARNWICK_PUBLISHED_FIELD(std::optional<qint64>, totalDiscs, std::nullopt)
    /// The parts of a plain-text reply where the album's tracks were asked for.
    TARNWICK_PUBLISHED_FIELD(QStringList, currentTrackList, {})
    /// The titles of the library's tracks with this album, in Music's order, and their durations in
    /// seconds, without those that are no numbers.
    TARNWICK_PUBLISHED_FIELD(QStringList, trackNames, {})
    TARNWICK_PUBLISHED_FIELD(QList<double>, trackDurations, {})
    /// The album by disc, discs ascending.
    TARNWICK_PUBLISHED_FIELD(QList<DiscTrack>, tracksByDisc, {})
    /// The album that the display has seen last; written by the display alone.
    TARNWICK_PUBLISHED_FIELD(std::optional<QString>, previousAlbumTitle, std::nullopt)
    /// Kilobits per second.
    TARNWICK_PUBLISHED_FIELD(double, currentBitRate, 0)
    /// Bytes.
    TARNWICK_PUBLISHED_FIELD(double, currentFileSize, 0)
    /// As Music reports it.
    TARNWICK_PUBLISHED_FIELD(double, currentSampleRate, 0)
    TARNWICK_PUBLISHED_FIELD(QString, currentGenre, {})
    /// The playlist that contains the current track, or the one started last.
    TARNWICK_PUBLISHED_FIELD(QString, currentPlaylistName, {})

public:
    /// What a source is made of; everything must outlive it.
    struct Parts {
        dispatch::Dispatcher& dispatcher;
        std::shared_ptr<ScriptRunner> runner;
        std::shared_ptr<images::ImageStore> images;
        std::optional<images::Image> noCover; ///< what stands for a missing cover
        LogLine log;
    };

    explicit MusicSource(Parts parts);
    ~MusicSource() override;

    /// The instance of the program; null before it is made.
    static MusicSource* shared();

    /// Makes `source` the shared instance until it is destroyed.
    static void setShared(MusicSource* source);

    /// Whether something plays of which there is no cover, or none yet.
    bool isWithoutCover() const { return m_isPlayerActive && m_currentAlbumArtwork == m_parts.noCover; }

    /// Refreshes whenever `music` announces a change, until the source is destroyed.
    void follow(players::MusicApplication& music);

    /// Starts the polls: the now-playing facts and the volume every 5 s, shuffle every 10 s, all at
    /// once for the first time. Replaces polls that run.
    void startUpdating();
    void stopUpdating();

    /// Starts counting the position up once a second. Replaces a count that runs.
    void startElapsedTimeTimer();

    /// Asks Music what plays. Any thread; blocks it while the script runs. `applied` is called on the
    /// main queue when the fields have been assigned.
    void fetchNowPlaying(dispatch::Task applied = {});

    /// Asks for the album's tracks on the background queue and returns at once. A reply that comes when
    /// another album plays is dropped. Any thread.
    void fetchTracksByDisc(dispatch::Task applied = {});

    /// The same rules as `fetchNowPlaying`.
    void fetchCurrentPlaylistName(dispatch::Task applied = {});
    void syncShuffleState(dispatch::Task applied = {});
    void syncVolume(dispatch::Task applied = {});

    /// Plays or pauses; may have to start a player, so it goes on by itself. Refreshes when done.
    void playPause(dispatch::Task finished = {});
    void nextTrack();
    void previousTrack();
    void toggleShuffle();
    void stop();

    /// Goes to a place in the track, seconds from its beginning; beyond its ends means the end. Does nothing
    /// without a track.
    void seek(double seconds);

    /// `level` is a fraction from 0 to 1.
    void setVolume(double level);

    /// Plays a title of the current album.
    void playTrack(const QString& named);

    /// The names of Music's playlists in its order; empty on any failure. Any thread.
    QStringList fetchPlaylists() const;

    /// Plays the first playlist whose name is `named`, letter case and white space around it apart. Why it
    /// was not started, in one line; none when it was.
    std::optional<QString> playPlaylist(const QString& named);

    /// Plays "Musica", after starting a player when none runs; goes on by itself.
    void playStartupPlaylist();

    /// The folder of the current track's file; none for a stream, or when nothing plays. Any thread.
    std::optional<QString> currentTrackFolderURL() const;

    /// What Music says is the disc number of the current track, 0 when it has none. Any thread.
    int currentDiscNumberOfPlayer() const;

    /// Clears the facts of the track: at once on the main thread, else by a task of the main queue.
    void resetTrackInfo();

    void setPreviousAlbumTitle(const std::optional<QString>& title);

    /// Whether `tracksByDisc` is the list of the current album, and not one that is about to be replaced.
    bool hasTracksOfCurrentAlbum() const;

    /// What tells the current album from others: its name or, where it has none, the folder of its file or,
    /// of a stream, the artist. Only good for comparing.
    const QString& albumIdentity() const { return m_albumIdentity; }
    Q_SIGNAL void albumIdentityChanged();

    /// Emitted when another player is followed, or what it can do has changed.
    Q_SIGNAL void playerChanged();

    /// The watchers that are told after each task that assigns fields.
    ChangePass& changes() { return m_changes; }

private:
    /// What outlives the object in tasks that are under way.
    struct Link;

    template <typename T>
    void publish(T& field, const std::type_identity_t<T>& value, void (MusicSource::*changed)()) {
        field = value;
        Q_EMIT(this->*changed)();
    }
    template <typename T>
    void publishIfChanged(T& field, const std::type_identity_t<T>& value, void (MusicSource::*changed)()) {
        if (!(field == value))
            publish(field, value, changed);
    }

    static void deliver(const std::shared_ptr<Link>& link, std::function<void(MusicSource&)> task,
                        dispatch::Task applied = {});
    static void requestNowPlaying(const std::shared_ptr<Link>& link, dispatch::Task applied);
    static void requestTracksByDisc(const std::shared_ptr<Link>& link, const QString& album,
                                    dispatch::Task applied);
    static void requestPlaylistName(const std::shared_ptr<Link>& link, bool isOfAnotherPlayer,
                                    dispatch::Task applied);
    static void requestShuffle(const std::shared_ptr<Link>& link, const QString& text,
                               dispatch::Task applied);
    static void requestVolume(const std::shared_ptr<Link>& link, dispatch::Task applied);
    static void answerAnnouncement(const std::shared_ptr<Link>& link, players::Changes changes);

    void applyNowPlayingReply(const script::Descriptor& reply, const QString& folder);
    void applyTrackFacts(const script::Descriptor& reply);
    void applyFileFacts(const script::Descriptor& reply);
    void applyTracksByDisc(const script::Descriptor& reply);
    void identifyAlbum(const QString& identity);
    void resetNow();
    void refreshSoon();
    void runLasting(const QString& text, std::function<void(const script::Outcome&)> finished);

    Parts m_parts;
    std::shared_ptr<Link> m_link;
    players::MusicApplication* m_followed = nullptr;
    ChangePass m_changes;
    QString m_albumIdentity;
    std::optional<QString> m_albumOfTracks; ///< the identity of the album that the list is of
    dispatch::SerialQueue m_lasting;        ///< texts that may start a player and wait for it

    std::unique_ptr<dispatch::TimerSource> updateTimer;
    std::unique_ptr<dispatch::TimerSource> shuffleSyncTimer;
    std::unique_ptr<dispatch::TimerSource> volumeSyncTimer;
    std::unique_ptr<dispatch::TimerSource> elapsedTimeTimer;
};

} // namespace tarnwick
