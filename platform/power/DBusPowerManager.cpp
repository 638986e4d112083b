#include "platform/power/DBusPowerManager.h"

#include "platform/power/ScreenSaverSuspension.h"

#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <vector>

namespace tarnwick::power {

namespace {

/// The one with threads to spare: a service that hangs holds a thread for a second.
constexpr auto askingQueue = dispatch::QualityOfService::Default;

/// Where the X server is; none when there is no business with one.
std::optional<QByteArray> displayOf(const DBusPowerManager::Places& places) {
    if (places.display.isEmpty() && QGuiApplication::platformName() != QLatin1String("xcb"))
        return std::nullopt;
    return places.display.toUtf8();
}

/// What an assertion is kept by.
struct Hold {
    QString reason;
    std::unique_ptr<Inhibition> inhibition;
    std::unique_ptr<ScreenSaverSuspension> suspension;
};

} // namespace

/// Tells when the services come and go.
class DBusPowerManager::Watch {
public:
    using Changed = std::function<void(Service service, const QString& owner)>;

    /// Blocks until the buses watch. `changed` is called on the thread that this is moved to.
    Watch(const Places& places, const Changed& changed)
        : m_session(QDBusConnection::SessionBus, places.session),
          m_system(QDBusConnection::SystemBus, places.system) {
        for (const Service service : allServices) {
            const Connection& connection =
                busOf(service) == QDBusConnection::SystemBus ? m_system : m_session;
            auto watcher = std::make_unique<QDBusServiceWatcher>(nameOf(service), connection.bus(),
                                                                 QDBusServiceWatcher::WatchForOwnerChange);
            QObject::connect(watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, watcher.get(),
                             [service, changed](const QString&, const QString&, const QString& owner) {
                                 changed(service, owner);
                             });
            m_watchers.push_back(std::move(watcher));
        }
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        for (const Connection* connection :
             {&m_session, &m_system}) // an answer comes after what was asked before
            if (connection->isConnected())
                connection->call(QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"),
                                                                bus, QStringLiteral("GetId")));
    }

    void moveToThread(QThread* thread) {
        for (const auto& watcher : m_watchers)
            watcher->moveToThread(thread);
    }

    bool seesAnybody() const { return m_session.isConnected() || m_system.isConnected(); }

private:
    const Connection m_session;
    const Connection m_system;
    std::vector<std::unique_ptr<QDBusServiceWatcher>> m_watchers;
};

/// Used on the queue, and for its end on the main thread.
struct DBusPowerManager::State {
    State(Places places_, std::optional<QByteArray> display_)
        : places(std::move(places_)), display(std::move(display_)) {}

    bool startWatching(const Watch::Changed& changed);
    void take(Assertion assertion, bool mayStart);
    void drop(Service service, const QString& owner);
    bool isHeldBy(Service service);
    std::vector<Assertion> assertions();

    const Places places;
    const std::optional<QByteArray> display;
    QThread* const mainThread = QThread::currentThread();
    bool isWatching = false; ///< the queue's own
    bool somebodyMayCome = false;
    std::mutex mutex; ///< for all that follows; held for moments
    std::map<Assertion, Hold> holds;
    std::unique_ptr<Watch> watch;
    std::atomic<bool> ended = false;
};

/// Whether there is anybody who could come.
bool DBusPowerManager::State::startWatching(const Watch::Changed& changed) {
    if (!isWatching) {
        auto made = std::make_unique<Watch>(places, changed);
        const std::scoped_lock lock(mutex);
        if (ended)
            return false;
        isWatching = true;
        somebodyMayCome = made->seesAnybody();
        made->moveToThread(mainThread);
        watch = std::move(made);
    }
    return somebodyMayCome;
}

/// Asks whoever is better than the one by whom the assertion is held, until somebody grants it.
void DBusPowerManager::State::take(Assertion assertion, bool mayStart) {
    QString reason;
    std::unique_ptr<Inhibition> granted;
    std::unique_ptr<ScreenSaverSuspension> suspension;
    std::optional<Service> now;
    {
        const std::scoped_lock lock(mutex);
        const auto hold = holds.find(assertion);
        if (hold == holds.end())
            return;
        reason = hold->second.reason;
        if (hold->second.inhibition)
            now = hold->second.inhibition->service();
        suspension = std::move(hold->second.suspension);
    }
    for (const Service service : allServices) {
        if (granted || (now && *now <= service))
            break;
        granted = Inhibition::ask(
            service, busOf(service) == QDBusConnection::SystemBus ? places.system : places.session, reason,
            mayStart);
        if (granted)
            now = service;
    }
    // The portal and logind may grant what has no effect on an X server that nobody else looks after.
    if (now == Service::ScreenSaver)
        suspension.reset();
    else if (display && !suspension)
        suspension = ScreenSaverSuspension::ask(*display);
    {
        const std::scoped_lock lock(mutex);
        if (const auto hold = holds.find(assertion); hold != holds.end() && !ended) {
            hold->second.suspension = std::move(suspension);
            if (granted)
                std::swap(hold->second.inhibition, granted);
        }
    }
    if (granted)
        granted->end(); // the one before, or one that came too late
}

/// Forgets what was granted by a process that `service` is not any more.
void DBusPowerManager::State::drop(Service service, const QString& owner) {
    std::vector<std::unique_ptr<Inhibition>> gone;
    const std::scoped_lock lock(mutex);
    for (auto& [assertion, hold] : holds)
        if (hold.inhibition && hold.inhibition->service() == service && hold.inhibition->owner() != owner)
            gone.push_back(std::move(hold.inhibition));
}

/// Whether every assertion is held by it or by a better one.
bool DBusPowerManager::State::isHeldBy(Service service) {
    const std::scoped_lock lock(mutex);
    return std::all_of(holds.begin(), holds.end(), [service](const auto& each) {
        const auto& inhibition = each.second.inhibition;
        return inhibition && inhibition->service() <= service;
    });
}

std::vector<PowerManager::Assertion> DBusPowerManager::State::assertions() {
    const std::scoped_lock lock(mutex);
    std::vector<Assertion> all;
    for (const auto& [assertion, hold] : holds)
        all.push_back(assertion);
    return all;
}

DBusPowerManager::DBusPowerManager(dispatch::Dispatcher& dispatcher, const Places& places)
    : m_dispatcher(dispatcher), m_queue(dispatcher.globalQueue(askingQueue)),
      m_state(std::make_shared<State>(places, displayOf(places))) {}

DBusPowerManager::~DBusPowerManager() {
    const std::scoped_lock lock(m_state->mutex);
    m_state->ended = true;
    m_state->watch.reset();
    m_state->holds.clear();
}

void DBusPowerManager::preventUserIdleDisplaySleep(const QString& reason, CreatedHandler created) {
    const Watch::Changed changed = [this](Service service, const QString& owner) {
        renew(service, owner, repetitions); // the watch ends with this object
    };
    m_queue.async([state = m_state, &dispatcher = m_dispatcher, assertion = ++m_last, reason, changed,
                   created = std::move(created)] {
        const bool somebodyMayCome = state->startWatching(changed);
        {
            const std::scoped_lock lock(state->mutex);
            if (state->ended)
                return;
            state->holds[assertion].reason = reason;
        }
        state->take(assertion, true);
        std::optional<Assertion> answer = assertion;
        if (const std::scoped_lock lock(state->mutex); !somebodyMayCome && !state->ended) {
            if (!state->holds[assertion].suspension) {
                state->holds.erase(assertion);
                answer.reset();
            }
        }
        dispatcher.mainQueue().async([state, created, answer] {
            if (!state->ended)
                created(answer);
        });
    });
}

void DBusPowerManager::release(Assertion assertion) {
    m_queue.async([state = m_state, assertion] {
        Hold hold;
        {
            const std::scoped_lock lock(state->mutex);
            if (auto node = state->holds.extract(assertion))
                hold = std::move(node.mapped());
        }
        if (hold.inhibition)
            hold.inhibition->end();
    });
}

/// `owner` is the process that has the service's name now; empty for nobody.
void DBusPowerManager::renew(Service service, const QString& owner, int repetitionsLeft) {
    m_queue.async([this, state = m_state, &dispatcher = m_dispatcher, service, owner, repetitionsLeft] {
        state->drop(service, owner);
        for (const Assertion assertion : state->assertions())
            state->take(assertion, false);
        if (owner.isEmpty() || repetitionsLeft == 0 || state->isHeldBy(service))
            return;
        dispatcher.asyncAfter(dispatcher.mainQueue(), timeToRepetition,
                              [this, state, service, owner, repetitionsLeft] {
                                  if (!state->ended)
                                      renew(service, owner, repetitionsLeft - 1);
                              });
    });
}

} // namespace tarnwick::power
