#pragma once

#include "players/mpris/PlayerLink.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace tarnwick::players {

/// Who on the bus is a player, with a link to each; hands every signal to the link that it is for. Lives on
/// the bus's thread.
class PlayerRoster : public QObject {
    Q_OBJECT

public:
    /// Whom to tell. None of these may be empty.
    struct Handlers {
        std::function<void()> changed;           ///< what is believed of any player, or who there is
        std::function<void(PlayerLink&)> leaves; ///< this player has gone; the link is deleted next
        std::function<void(PlayerLink&)> trackListChanged;
        std::function<void(PlayerLink&)> playlistsChanged;
    };

    /// Begins to look on `bus`, which may be unconnected: then nobody is ever there.
    PlayerRoster(const QDBusConnection& bus, dispatch::Dispatcher& dispatcher, Handlers handlers);

    /// In the order in which they appeared.
    const std::vector<std::unique_ptr<PlayerLink>>& links() const { return m_links; }
    /// The one with this unique bus name; none when it is nobody's.
    PlayerLink* linkOf(const QString& owner) const;
    /// Whether everybody who was there at the beginning is in the list.
    bool isComplete() const { return m_namesAreKnown && m_ownersAwaited == 0; }

private Q_SLOTS:
    void ownerChanged(const QString& name, const QString& before, const QString& after);
    void propertiesChanged(const QDBusMessage& message);
    void seeked(const QDBusMessage& message);
    void trackListChanged(const QDBusMessage& message);
    void playlistsChanged(const QDBusMessage& message);

private:
    void hear();
    void listNames();
    void findOwner(const QString& name);
    void ask(const QString& method, const QVariantList& arguments,
             const std::function<void(const QVariant&)>& answered);
    void foundOwner(const QString& name, const QString& owner);

    QDBusConnection m_bus;
    dispatch::Dispatcher& m_dispatcher;
    const Handlers m_handlers;
    std::vector<std::unique_ptr<PlayerLink>> m_links;
    bool m_namesAreKnown = false;
    int m_ownersAwaited = 0;
};

} // namespace tarnwick::players
