#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace tarnwick::dispatch {

/// A global queue: threads that are started when they are first needed, up to a limit.
///
/// Standard threads and locks rather than QThreadPool, because a thread sanitizer sees through them
/// and not through a Qt that was built without it.
class TaskQueue : public Queue {
public:
    /// `maximumThreads` tasks run at the same time; `niceness` (0 to 19) is added to the threads'.
    explicit TaskQueue(unsigned maximumThreads, int niceness = 0);
    ~TaskQueue() override;

    void async(Task task) override;

    /// Drops what is queued and waits for the tasks that run.
    void shutDown();

private:
    void work();

    const unsigned m_maximumThreads;
    const int m_niceness;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Task> m_tasks;
    std::vector<std::thread> m_threads;
    unsigned m_idle = 0;
    bool m_stopping = false;
};

} // namespace tarnwick::dispatch
