#pragma once

#include "platform/dispatch/Dispatcher.h"

namespace tarnwick::dispatch {

/// Runs its tasks one after the other, in the order in which they came, on another queue, each as a task
/// of its own there.
class SerialQueue : public Queue {
public:
    /// `target` must outlive this queue and its tasks.
    explicit SerialQueue(Queue& target);
    ~SerialQueue() override;

    void async(Task task) override;

    /// Runs on the caller's thread what has not started yet. Only after the target was shut down, when
    /// nothing of this queue runs any more.
    void finish();

private:
    struct State;

    const std::shared_ptr<State> m_state;
};

} // namespace tarnwick::dispatch
