#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <memory>

namespace tarnwick::players {

/// Tasks on a queue that end with their owner: when this is gone none runs and none starts.
class BackgroundWork {
public:
    /// `queue` must outlive this object.
    explicit BackgroundWork(dispatch::Queue& queue);
    ~BackgroundWork();

    /// Queues `task`; any thread may call it, and a task too.
    void run(dispatch::Task task);

    /// Drops what is queued and waits for the tasks that run. Later ones are dropped as well.
    void close();

    /// Whether tasks should come to an end.
    bool isClosed() const;

private:
    struct State;

    dispatch::Queue& m_queue;
    std::shared_ptr<State> m_state;
};

} // namespace tarnwick::players
