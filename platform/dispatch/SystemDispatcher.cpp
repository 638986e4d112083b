#include "platform/dispatch/SystemDispatcher.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <algorithm>
#include <deque>
#include <semaphore>

namespace tarnwick::dispatch {

using std::chrono::steady_clock;

/// Tasks are kept behind a lock of ours; the event loop is only woken, with one event for many tasks.
class SystemDispatcher::MainQueue : public QObject, public Queue {
public:
    void async(Task task) override {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
        wake();
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        // Only as many as there are now, so that tasks that queue tasks do not starve the window.
        std::size_t count = 0;
        {
            const std::lock_guard lock(m_mutex);
            m_awake = false;
            count = m_tasks.size();
        }
        while (count-- > 0 && runNext()) {
        }
        const std::lock_guard lock(m_mutex);
        if (!m_tasks.empty())
            wake();
        return true;
    }

private:
    bool runNext() {
        Task task;
        {
            const std::lock_guard lock(m_mutex);
            if (m_tasks.empty()) // a nested event loop was faster
                return false;
            task = std::move(m_tasks.front());
            m_tasks.pop_front();
        }
        task();
        return true;
    }

    void wake() {
        if (!m_awake) {
            m_awake = true;
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        }
    }

    std::mutex m_mutex;
    std::deque<Task> m_tasks;
    bool m_awake = false;
};

namespace {

unsigned threads(unsigned least) { return std::max(least, std::thread::hardware_concurrency()); }

} // namespace

// A script sent through the blocking runner occupies a thread of its caller's queue as well as one of
// the user-interactive queue, so each has room for more than the three polls. In the background, a
// file on a mount that hangs holds its thread for good.
SystemDispatcher::SystemDispatcher()
    : m_mainThread(std::this_thread::get_id()), m_main(std::make_unique<MainQueue>()),
      m_userInteractive(threads(8)), m_default(threads(8)), m_background(threads(8), 5),
      m_timeKeeper([this] { keepTime(); }) {}

SystemDispatcher::~SystemDispatcher() { shutDown(); }

void SystemDispatcher::shutDown() {
    std::multimap<Instant, Task> dropped;
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        dropped.swap(m_due);
    }
    m_timeChanged.notify_all();
    if (m_timeKeeper.joinable())
        m_timeKeeper.join();
    m_default.shutDown();
    m_background.shutDown();
    m_userInteractive.shutDown();
}

Queue& SystemDispatcher::mainQueue() { return *m_main; }

Queue& SystemDispatcher::globalQueue(QualityOfService quality) {
    switch (quality) {
    case QualityOfService::UserInteractive:
        return m_userInteractive;
    case QualityOfService::Background:
        return m_background;
    case QualityOfService::Default:
        break;
    }
    return m_default;
}

Instant SystemDispatcher::now() const { return steady_clock::now().time_since_epoch(); }

bool SystemDispatcher::isMainThread() const { return std::this_thread::get_id() == m_mainThread; }

bool SystemDispatcher::sleepFor(Duration duration) {
    std::unique_lock lock(m_mutex);
    return !m_timeChanged.wait_until(lock, steady_clock::time_point(now() + duration),
                                     [this] { return m_stopping; });
}

void SystemDispatcher::runAndWait(QualityOfService quality, Task task) {
    // Signalled when the task is destroyed, so that a caller is let go even when a shutdown drops it.
    class Signal {
    public:
        explicit Signal(std::shared_ptr<std::counting_semaphore<>> semaphore)
            : m_semaphore(std::move(semaphore)) {}
        Signal(const Signal&) = delete;
        Signal& operator=(const Signal&) = delete;
        ~Signal() { m_semaphore->release(); }

    private:
        std::shared_ptr<std::counting_semaphore<>> m_semaphore;
    };
    auto semaphore = std::make_shared<std::counting_semaphore<>>(0);
    auto signal = std::make_shared<Signal>(semaphore);
    globalQueue(quality).async([task = std::move(task), signal = std::move(signal)] { task(); });
    semaphore->acquire();
}

void SystemDispatcher::callAt(Instant when, Task callback) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping)
            return;
        m_due.emplace(when, std::move(callback));
    }
    m_timeChanged.notify_all();
}

void SystemDispatcher::keepTime() {
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        if (m_due.empty()) {
            m_timeChanged.wait(lock);
            continue;
        }
        const auto first = m_due.begin();
        if (first->first > now()) {
            m_timeChanged.wait_until(lock, steady_clock::time_point(first->first));
            continue;
        }
        const Task callback = std::move(first->second);
        m_due.erase(first);
        lock.unlock();
        callback();
        lock.lock();
    }
}

} // namespace tarnwick::dispatch
