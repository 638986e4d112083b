#pragma once

#include "players/Player.h"
#include "players/mpris/BusThread.h"
#include "players/mpris/CurrentTrack.h"
#include "players/mpris/MprisMusic.h"
#include "players/mpris/PlayerChooser.h"
#include "players/mpris/PlayerLauncher.h"
#include "players/mpris/PlayerRoster.h"

#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace tarnwick::players {

/// What the session tells the outside. Called on the bus's thread.
class SessionListener {
public:
    /// A newer snapshot; `isComplete` when nothing of it is still being read.
    virtual void publish(Snapshot snapshot, bool isComplete) = 0;
    /// A command has ended.
    virtual void finished(const PlayerLink::Failure& failure) = 0;
    /// The player does not play a title that was asked for; why, for people. `finished` is told as well.
    virtual void refused(const QString& line) = 0;

protected:
    ~SessionListener() = default;
};

/// The players on one bus: finds them, follows the one that counts, and says what is to be seen. Lives on
/// the bus's thread.
class Session : public QObject {
public:
    /// Begins to look for players. What is handed in must outlive this object.
    Session(const MprisMusic::Options& options, BusThread& thread, dispatch::Dispatcher& dispatcher,
            images::ImageStore& images, SessionListener& listener);
    ~Session() override;

    // As in `Player`. The listener hears of the end of each command.
    void command(Player::Command command);
    void setVolume(double volume);
    void setShuffle(bool shuffle);
    void setPosition(double seconds);
    void play(const Track& track);
    void play(const Playlist& playlist);

    void positionWasRead();
    void playlistsWereRead();

private:
    void askDisplay();
    bool mayChoose(const std::vector<Candidate>& candidates);
    void playerLeaves(const PlayerLink& link);
    void playersChanged();
    Candidate candidateFor(const PlayerLink& link);
    void doubtFollowed(const std::vector<Candidate>& candidates);
    void follow(PlayerLink* link);
    void beliefChanged();
    std::shared_ptr<const Library> libraryAround(const Track& current) const;
    void publish();
    Snapshot makeSnapshot() const;
    PlayerLink::Done done();
    PlayerLink* followedOrFail();

    const MprisMusic::Options m_options;
    dispatch::Dispatcher& m_dispatcher;
    SessionListener& m_listener;
    const QString m_connectionName;
    QDBusConnection m_bus;
    CurrentTrack m_track; ///< of the followed player
    const PlayerLauncher m_launcher;
    const dispatch::Instant m_begin;
    BackgroundWork m_memory; ///< writes down which player was followed
    QString m_remembered;    ///< the desktop file of the player that was followed before this session
    bool m_isDisplayAwaited = false;
    QString m_displayed; ///< the player that a running display follows; empty when there is no such thing

    std::optional<PlayerRoster> m_players;
    QHash<QString, dispatch::Instant> m_lastPlayed; ///< by owner; since they appeared
    PlayerLink* m_followed = nullptr;
    dispatch::Instant m_lastRival{0}; ///< when another player began to play while the followed one did
    QTimer m_choice;                  ///< coalesces what many players say at once
    QTimer m_firstChoice;             ///< runs while others may still answer that play as well
    bool m_isFirstChoiceDue = false;
    Snapshot m_shown; ///< the last that was published
};

} // namespace tarnwick::players
