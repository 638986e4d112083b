#pragma once

#include "players/mpris/PlayerModel.h"
#include "players/mpris/PlaylistsLink.h"
#include "players/mpris/TrackListLink.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>

#include <functional>

namespace tarnwick::players {

/// The wire to one player: asks it, commands it, and tells its model what it says. Lives on the bus's
/// thread. No call waits, and each is given up after a second.
class PlayerLink : public QObject {
public:
    /// How a call ended: none when it went well, else why not, in a few words.
    using Failure = std::optional<QString>;
    using Done = std::function<void(const Failure&)>;
    using Reply = std::function<void(const QDBusMessage&)>;

    /// The player that owns `busName` under the unique name `owner`. `changed` is called whenever what is
    /// believed, or whether the player answers, may have changed.
    PlayerLink(const QDBusConnection& bus, QString busName, QString owner, dispatch::Dispatcher& dispatcher,
               std::function<void()> changed);

    /// Reads the first state.
    void start();

    /// Calls a method of the Player interface, or of `interface` ("TrackList").
    void call(const QString& method, const QVariantList& arguments, const Done& done,
              const QString& interface = QStringLiteral("Player"));
    void setVolume(double volume, const Done& done);
    void setShuffle(bool shuffle, const Done& done);
    void setPosition(double seconds, const Done& done);

    /// Signals that the player sent.
    void propertiesChanged(const QVariantMap& changed, const QStringList& invalidated);
    void seeked();

    /// Lets the model think about what it was told meanwhile.
    void attend();

    /// Calls `ready` with the properties of `interface`: an empty map when the player has no such interface,
    /// none when it does not answer.
    void readProperties(const QString& interface,
                        const std::function<void(const std::optional<QVariantMap>&)>& ready);
    /// Calls `task` when the player, which left a call unanswered, answers again. It is asked at once.
    void whenItAnswers(std::function<void()> task);
    /// Sends a method call; `reply` gets the answer, of whatever kind.
    void send(QDBusMessage message, const Reply& reply);
    QDBusMessage method(const QString& interface, const QString& name) const;

    TrackListLink& trackList() { return m_trackList; }
    PlaylistsLink& playlists() { return m_playlists; }
    PlayerModel& model() { return m_model; }
    const Belief& belief() const { return m_model.belief(); }
    const QString& busName() const { return m_busName; }
    const QString& owner() const { return m_owner; }
    /// What a person asks for it by: its bus name behind the prefix, without an instance.
    QString name() const;
    /// The name a person knows it by; the bus name's last part until the player has said it.
    QString identity() const;
    /// The name of its desktop file without suffix; empty when it tells none.
    const QString& desktopEntry() const { return m_desktopEntry; }
    /// Whether it opens files it is given, as far as it says and has shown.
    bool canOpenFiles() const { return m_canOpenFiles; }
    void refusedFile() { m_canOpenFiles = false; }
    /// The same of playlists.
    bool canOpenPlaylists() const { return m_canOpenFiles && m_canOpenPlaylists; }
    void refusedPlaylist() { m_canOpenPlaylists = false; }
    /// Whether its first state has arrived.
    bool isReady() const { return m_model.isReady() && m_isIntroduced; }
    /// Whether nothing more has to be waited for to know if there is a first state.
    bool hasAnswered() const { return isReady() || m_model.isSilent(); }

    /// Whether it has left several questions in a row unanswered.
    bool isHanging() const { return m_model.isHanging(); }
    /// Whether it can be believed to play: one that says so but hangs cannot.
    bool isPlaying() const { return belief().state == PlayerState::Playing && !isHanging(); }

    /// Whether `wanted` names this player: its bus name, whole or behind the prefix, with or without
    /// instance, or its identity.
    bool isNamed(const QString& wanted) const;

    /// Whether `reply` says that none came in time.
    static bool isTimeOut(const QDBusMessage& reply);

private:
    QDBusMessage getAll(const QString& interface) const;
    void introduce();
    void read();
    void setProperty(const QString& name, const QVariant& value, const Done& done);
    void sendVolume();

    QDBusConnection m_bus;
    const QString m_busName;
    const QString m_owner;
    dispatch::Dispatcher& m_dispatcher;
    std::function<void()> m_changed;
    PlayerModel m_model;
    TrackListLink m_trackList;
    PlaylistsLink m_playlists;
    QTimer m_timer;
    std::vector<std::function<void()>> m_whenItAnswers;

    bool m_isIntroduced = false;
    int m_refusals = 0; ///< to say who it is
    int m_silences = 0; ///< when asked who it is
    QString m_identity;
    QString m_desktopEntry;
    bool m_canOpenFiles = false;
    bool m_canOpenPlaylists = false;

    QTimer m_volumeTimer; ///< runs while no volume may be sent
    std::optional<double> m_volume;
    std::vector<Done> m_volumeDone;
};

} // namespace tarnwick::players
