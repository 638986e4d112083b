#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace tarnwick::players {

/// A thread with a Qt event loop, on which objects of the bus can live.
class BusThread {
public:
    using Task = std::function<void()>;

    BusThread();

    /// Runs what was posted before, then ends the loop and waits for the thread.
    ~BusThread();

    /// Queues `task`; any thread may call it.
    void post(Task task);

private:
    class Queue;

    std::unique_ptr<Queue> m_queue;
    std::thread m_thread;
};

} // namespace tarnwick::players
