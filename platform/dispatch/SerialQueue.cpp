#include "platform/dispatch/SerialQueue.h"

#include <deque>
#include <mutex>

namespace tarnwick::dispatch {

struct SerialQueue::State : std::enable_shared_from_this<State> {
    explicit State(Queue& target_) : target(target_) {}

    void runNext() {
        target.async([self = shared_from_this()] {
            Task task;
            {
                const std::scoped_lock lock(self->mutex);
                task = std::move(self->tasks.front());
            }
            task();
            const std::scoped_lock lock(self->mutex);
            self->tasks.pop_front();
            if (!self->tasks.empty())
                self->runNext();
        });
    }

    Queue& target;
    std::mutex mutex;
    std::deque<Task> tasks; // the first one is on its way or runs
};

SerialQueue::SerialQueue(Queue& target) : m_state(std::make_shared<State>(target)) {}

SerialQueue::~SerialQueue() = default;

void SerialQueue::async(Task task) {
    const std::scoped_lock lock(m_state->mutex);
    m_state->tasks.push_back(std::move(task));
    if (m_state->tasks.size() == 1)
        m_state->runNext();
}

void SerialQueue::finish() {
    std::deque<Task> rest;
    {
        const std::scoped_lock lock(m_state->mutex);
        rest.swap(m_state->tasks);
    }
    for (const Task& task : rest)
        task();
}

} // namespace tarnwick::dispatch
