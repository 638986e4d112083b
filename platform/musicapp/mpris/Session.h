#pragma once

#include "platform/musicapp/Player.h"
#include "platform/musicapp/mpris/BusThread.h"
#include "platform/musicapp/mpris/MprisMusic.h"
#include "platform/musicapp/mpris/PlayerLauncher.h"
#include "platform/musicapp/mpris/PlayerRoster.h"
#include "platform/musicapp/mpris/TrackLoader.h"

#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace tarnwick::musicapp {

/// What the session tells the outside. Called on the bus's thread.
class SessionListener {
public:
    /// A newer snapshot; `isComplete` when nothing of it is still being read.
    virtual void publish(Snapshot snapshot, bool isComplete) = 0;
    /// A command has ended.
    virtual void finished(const PlayerLink::Failure& failure) = 0;

protected:
    ~SessionListener() = default;
};

/// The players on one bus: finds them, follows the one that counts, and says what is to be seen. Lives on
/// the bus's thread.
class Session : public QObject {
public:
    Session(const MprisMusic::Options& options, BusThread& thread, dispatch::Dispatcher& dispatcher,
            images::ImageStore& images, SessionListener& listener);
    ~Session() override;

    void command(Player::Command command);
    void setVolume(double volume);
    void setShuffle(bool shuffle);
    void setPosition(double seconds);
    void play(const Track& track);
    void play(const Playlist& playlist);
    void positionWasRead();
    void playlistsWereRead();

private:
    void playerLeaves(const PlayerLink& link);
    void trackListChanged(PlayerLink& link);
    void playersChanged();
    void follow(PlayerLink* link);
    void beliefChanged();
    void loadDetails();
    void detailsLoaded(const TrackDetails& details, bool isComplete);
    void loadAlbum();
    void albumLoaded(const std::shared_ptr<const Library>& album);
    void albumFromTrackList();
    std::shared_ptr<const Library> libraryAround(const Track& current) const;
    void activate(PlayerLink& link, const QString& playlist, bool isSecondTry, const PlayerLink::Done& done);
    void publish();
    Snapshot makeSnapshot() const;
    PlayerLink::Done done();
    PlayerLink* followedOrFail();

    const MprisMusic::Options m_options;
    dispatch::Dispatcher& m_dispatcher;
    SessionListener& m_listener;
    const QString m_connectionName;
    QDBusConnection m_bus;
    TrackLoader m_loader;
    const PlayerLauncher m_launcher;
    BackgroundWork m_memory; ///< writes down which player was followed

    std::optional<PlayerRoster> m_players;
    QHash<QString, dispatch::Instant> m_lastPlayed; ///< by owner; since they appeared
    PlayerLink* m_followed = nullptr;
    QTimer m_choice; ///< coalesces what many players say at once

    // Of the followed player:
    int m_trackSerial = 0; ///< of the track that the details are of
    Metadata m_detailed;   ///< of the same
    bool m_isLoading = false;
    bool m_isLoadingAlbum = false;
    TrackDetails m_details;
    std::shared_ptr<const Library> m_album = Library::empty(); ///< the last that was loaded
    QTimer m_patience;                                         ///< runs while a new album waits for its cover
    Snapshot m_shown;
};

} // namespace tarnwick::musicapp
