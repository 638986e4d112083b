#pragma once

#include "players/Announcer.h"
#include "players/Player.h"
#include "players/demo/DemoLibrary.h"
#include "players/demo/DemoMusic.h"
#include "players/demo/DemoQueue.h"
#include "players/demo/SleevePainter.h"

#include <QTemporaryDir>

#include <condition_variable>
#include <memory>
#include <mutex>

namespace tarnwick::images {
class ImageStore;
}

namespace tarnwick::players {

/// The simulated player. What it does is decided at once; the snapshot follows as soon as the sleeve of
/// the new track is painted, so that track and cover always change together.
class DemoTransport final : public Player, public std::enable_shared_from_this<DemoTransport> {
public:
    DemoTransport(const DemoMusic::Options& options, dispatch::Dispatcher& dispatcher,
                  images::ImageStore& images);

    /// Publishes the first snapshot; once, right after construction.
    void start();

    /// Nothing of this touches the dispatcher or the pictures any more when this returns.
    void shutDown();

    std::shared_ptr<const Snapshot> snapshot() const override;
    dispatch::Instant now() const override { return m_dispatcher.now(); }
    void positionWasRead() override {}
    void playlistsWereRead() override {}
    void command(Command command) override;
    void setVolume(double volume) override;
    void setShuffle(bool shuffle) override;
    void setPosition(double seconds) override;
    void play(const Track& track) override;
    void play(const Playlist& playlist) override;
    std::optional<QString> launch() override { return std::nullopt; }

    Announcer<Changes>& announcer() { return m_announcer; }

    /// Blocks until the snapshot shows what was decided, however long a sleeve is painted; false only when
    /// that never ends.
    bool waitUntilPublished();

private:
    using Lock = std::unique_lock<std::mutex>;

    // All of these need the lock.
    void rewind();
    void settle();
    void publish(Lock& lock);
    void show();
    void scheduleEnd();
    bool isSleeveReady() const;
    double position() const;
    const Track& track() const;
    DemoCover cover(int number) const;
    Snapshot makeSnapshot() const;

    void prepare(DemoCover cover, Lock& lock);
    void work(dispatch::QualityOfService quality, std::function<void(DemoTransport&, Lock&)> task);
    void endOfTrack(Lock& lock);

    dispatch::Dispatcher& m_dispatcher;
    images::ImageStore& m_images;
    Announcer<Changes> m_announcer;
    std::unique_ptr<QTemporaryDir> m_cassetteFolder; ///< of the cassette scene only
    const DemoLibrary m_library;
    SleevePainter m_sleeves;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::shared_ptr<const Snapshot> m_snapshot;
    bool m_isPublished = false; ///< the snapshot shows the state below
    bool m_isShutDown = false;
    int m_working = 0;                    ///< tasks that run
    DemoCover m_sleeve = DemoCover::None; ///< that `m_artwork` shows
    std::optional<Artwork> m_artwork;

    PlayerState m_state = PlayerState::Stopped;
    DemoQueue m_queue;
    double m_seconds = 0; ///< position at `m_since`
    dispatch::Instant m_since{0};
    double m_volume = 0.6;
    dispatch::WorkItem m_end;
};

} // namespace tarnwick::players
