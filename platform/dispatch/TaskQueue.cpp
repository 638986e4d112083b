#include "platform/dispatch/TaskQueue.h"

#include <unistd.h>

namespace tarnwick::dispatch {

TaskQueue::TaskQueue(unsigned maximumThreads, int niceness)
    : m_maximumThreads(maximumThreads), m_niceness(niceness) {}

TaskQueue::~TaskQueue() { shutDown(); }

void TaskQueue::async(Task task) {
    const std::lock_guard lock(m_mutex);
    if (m_stopping)
        return;
    m_tasks.push_back(std::move(task));
    if (m_tasks.size() > m_idle && m_threads.size() < m_maximumThreads)
        m_threads.emplace_back([this] { work(); });
    m_changed.notify_one();
}

void TaskQueue::shutDown() {
    std::deque<Task> dropped; // destroyed outside the lock: a task may own things that queue again
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        dropped.swap(m_tasks);
        threads.swap(m_threads);
    }
    m_changed.notify_all();
    for (std::thread& thread : threads)
        thread.join();
}

void TaskQueue::work() {
    // On Linux a thread's niceness is its own, although the call is named after the process.
    if (m_niceness > 0 && nice(m_niceness) == -1) {
        // A background thread at normal priority is slower company, not a fault.
    }
    std::unique_lock lock(m_mutex);
    for (;;) {
        ++m_idle;
        m_changed.wait(lock, [this] { return m_stopping || !m_tasks.empty(); });
        --m_idle;
        if (m_stopping)
            return;
        Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }
}

} // namespace tarnwick::dispatch
