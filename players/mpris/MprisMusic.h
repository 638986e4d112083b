#pragma once

#include "players/MusicApplication.h"

#include <QString>

#include <memory>

namespace tarnwick::images {
class ImageStore;
}

namespace tarnwick::players {

/// Any MPRIS player on a D-Bus session bus. The bus is talked to on a thread of this object's own, so
/// a player that hangs is only ever seen as one whose answers fail to come.
class MprisMusic final : public MusicApplication {
public:
    struct Options {
        QString busAddress = {};  ///< empty: the session bus
        QString player = {};      ///< bus name or Identity of the only player to follow; empty: choose
        QString cacheFolder = {}; ///< for pictures from the web; empty: none are kept
        QString stateFile = {};   ///< names the player followed last; empty: it is not remembered
        bool remembers = true;    ///< whether one is written down too that does not play when it is followed
        QString display = {};     ///< bus name of the display whose player is to be followed; empty: choose
    };

    /// Whether there is a session bus to connect to.
    static bool hasSessionBus();

    /// Returns at once; the connection is made on the other thread. `dispatcher` and `images` must
    /// outlive this object.
    MprisMusic(const Options& options, dispatch::Dispatcher& dispatcher, images::ImageStore& images);

    /// Leaves the bus. Never waits for a player.
    ~MprisMusic() override;

    script::ApplicationProvider& scripting() override;
    Capabilities capabilities() const override;
    QString playerName() const override;
    QString playerAddress() const override;
    QStringList playerNames() const override;
    void setRefusalHandler(RefusalHandler handler) override;
    void setChangeHandler(ChangeHandler handler) override;
    bool waitUntilReady(dispatch::Duration timeout) override;
    bool waitUntilComplete(dispatch::Duration timeout) override;
    std::optional<QString> finishCommands(dispatch::Duration timeout) override;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace tarnwick::players
