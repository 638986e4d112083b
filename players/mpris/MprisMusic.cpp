#include "players/mpris/MprisMusic.h"

#include "players/Announcer.h"
#include "players/ScriptableMusic.h"
#include "players/mpris/BusThread.h"
#include "players/mpris/PlayerLauncher.h"
#include "players/mpris/Session.h"

#include <QFile>

#include <condition_variable>
#include <mutex>

namespace tarnwick::players {

using namespace std::chrono_literals;

/// What every thread sees, and the way to the bus's thread.
class MprisMusic::Impl final : public Player, public SessionListener {
public:
    Impl(const Options& options, dispatch::Dispatcher& dispatcher, images::ImageStore& images)
        : m_dispatcher(dispatcher), m_player(options.player),
          m_launcher(options.stateFile, options.busAddress), m_scripting(*this) {
        m_thread.post([this, options, &images] {
            m_session = std::make_unique<Session>(options, m_thread, m_dispatcher, images, *this);
        });
    }

    ~Impl() override {
        m_announcer.setHandler({});
        m_refusals.setHandler({});
        m_thread.post([this] { m_session.reset(); });
    }

    std::shared_ptr<const Snapshot> snapshot() const override {
        const std::lock_guard lock(m_mutex);
        return m_snapshot;
    }

    dispatch::Instant now() const override { return m_dispatcher.now(); }

    void positionWasRead() override {
        if (isDue(m_positionAskedAt))
            m_thread.post([this] { m_session->positionWasRead(); });
    }

    void playlistsWereRead() override {
        if (isDue(m_playlistsAskedAt))
            m_thread.post([this] { m_session->playlistsWereRead(); });
    }

    void command(Command command) override {
        send([command](Session& session) { session.command(command); });
    }

    void setVolume(double volume) override {
        stand([volume](Snapshot& snapshot) { snapshot.volume = volume; });
        send([this, volume](Session& session) {
            arrived();
            session.setVolume(volume);
        });
    }

    void setShuffle(bool shuffle) override {
        stand([shuffle](Snapshot& snapshot) { snapshot.shuffle = shuffle; });
        send([this, shuffle](Session& session) {
            arrived();
            session.setShuffle(shuffle);
        });
    }

    void setPosition(double seconds) override {
        send([seconds](Session& session) { session.setPosition(seconds); });
    }

    void play(const Track& track) override {
        send([track](Session& session) { session.play(track); });
    }

    void play(const Playlist& playlist) override {
        send([playlist](Session& session) { session.play(playlist); });
    }

    std::optional<QString> launch() override {
        // Right after the start there may be one that is not known yet.
        if (!comesTo([](const Impl& self) { return self.m_isReady; }, firstLook))
            return QStringLiteral("the session bus does not answer");
        if (snapshot()->running)
            return std::nullopt;
        if (const auto failure = m_launcher.start(m_player))
            return failure;
        if (comesTo([](const Impl& self) { return self.m_snapshot->running; }, launchPatience))
            return std::nullopt;
        return QStringLiteral("the player did not appear");
    }

    ScriptableMusic& scripting() { return m_scripting; }
    Announcer<Changes>& announcer() { return m_announcer; }
    Announcer<QString>& refusals() { return m_refusals; }

    bool waitUntilReady(dispatch::Duration timeout) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, timeout, [this] { return m_isReady; });
    }

    bool waitUntilComplete(dispatch::Duration timeout) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, timeout, [this] { return m_isReady && m_isComplete; });
    }

    std::optional<QString> finishCommands(dispatch::Duration timeout) {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_for(lock, timeout, [this] { return m_unanswered == 0; }) && !m_failure)
            return QStringLiteral("the player does not answer");
        return std::exchange(m_failure, std::nullopt);
    }

private:
    void publish(Snapshot snapshot, bool isComplete) override {
        Changes changes;
        {
            const std::lock_guard lock(m_mutex);
            if (m_onTheWay > 0) { // the session does not know yet what was set
                snapshot.volume = m_snapshot->volume;
                snapshot.shuffle = m_snapshot->shuffle;
            }
            changes = difference(*m_snapshot, snapshot, now());
            m_snapshot = std::make_shared<const Snapshot>(std::move(snapshot));
            m_isReady = true;
            m_isComplete = isComplete;
            m_changed.notify_all();
        }
        if (changes)
            m_announcer.announce(changes);
    }

    void finished(const PlayerLink::Failure& failure) override {
        const std::lock_guard lock(m_mutex);
        --m_unanswered;
        if (!m_failure)
            m_failure = failure;
        m_changed.notify_all();
    }

    void refused(const QString& line) override { m_refusals.announce(line); }

    /// Waits until `condition` holds under the lock, `patience` at most; false as well when the program ends.
    bool comesTo(const std::function<bool(const Impl&)>& condition, dispatch::Duration patience) {
        constexpr auto step = 20ms;
        for (const auto end = now() + patience; now() < end;) {
            {
                const std::lock_guard lock(m_mutex);
                if (condition(*this))
                    return true;
            }
            if (!m_dispatcher.sleepFor(step))
                return false;
        }
        return false;
    }

    /// Whether what was done last at `last` may be done again.
    bool isDue(dispatch::Instant& last) {
        const std::lock_guard lock(m_mutex);
        if (now() < last + 1s)
            return false;
        last = now();
        return true;
    }

    /// Lets the snapshot show at once what is about to be set.
    void stand(const std::function<void(Snapshot&)>& change) {
        const std::lock_guard lock(m_mutex);
        Snapshot next = *m_snapshot;
        change(next);
        m_snapshot = std::make_shared<const Snapshot>(std::move(next));
        ++m_onTheWay;
    }

    void arrived() {
        const std::lock_guard lock(m_mutex);
        --m_onTheWay;
    }

    void send(std::function<void(Session&)> command) {
        {
            const std::lock_guard lock(m_mutex);
            ++m_unanswered;
        }
        m_thread.post([this, command = std::move(command)] { command(*m_session); });
    }

    static constexpr auto firstLook = 2s;
    static constexpr auto launchPatience = 10s;

    dispatch::Dispatcher& m_dispatcher;
    const QString m_player;
    const PlayerLauncher m_launcher;
    ScriptableMusic m_scripting;
    Announcer<Changes> m_announcer;
    Announcer<QString> m_refusals;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::shared_ptr<const Snapshot> m_snapshot = std::make_shared<Snapshot>();
    bool m_isReady = false;
    bool m_isComplete = false;
    int m_onTheWay = 0;   ///< values set that have not reached the session
    int m_unanswered = 0; ///< commands
    std::optional<QString> m_failure;
    dispatch::Instant m_positionAskedAt = -1h;
    dispatch::Instant m_playlistsAskedAt = -1h;

    std::unique_ptr<Session> m_session; ///< touched on the bus's thread only
    BusThread m_thread;                 ///< ends before anything above goes
};

bool MprisMusic::hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

MprisMusic::MprisMusic(const Options& options, dispatch::Dispatcher& dispatcher, images::ImageStore& images)
    : m_impl(std::make_unique<Impl>(options, dispatcher, images)) {}

MprisMusic::~MprisMusic() = default;

script::ApplicationProvider& MprisMusic::scripting() { return m_impl->scripting(); }

Capabilities MprisMusic::capabilities() const { return m_impl->snapshot()->capabilities; }

QString MprisMusic::playerName() const { return m_impl->snapshot()->playerName; }

QString MprisMusic::playerAddress() const { return m_impl->snapshot()->playerAddress; }

QStringList MprisMusic::playerNames() const { return m_impl->snapshot()->playerNames; }

void MprisMusic::setRefusalHandler(RefusalHandler handler) {
    m_impl->refusals().setHandler(std::move(handler));
}

void MprisMusic::setChangeHandler(ChangeHandler handler) {
    m_impl->announcer().setHandler(std::move(handler));
}

bool MprisMusic::waitUntilReady(dispatch::Duration timeout) { return m_impl->waitUntilReady(timeout); }

bool MprisMusic::waitUntilComplete(dispatch::Duration timeout) { return m_impl->waitUntilComplete(timeout); }

std::optional<QString> MprisMusic::finishCommands(dispatch::Duration timeout) {
    return m_impl->finishCommands(timeout);
}

} // namespace tarnwick::players
