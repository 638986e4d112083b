#include "players/BackgroundWork.h"

#include <condition_variable>
#include <mutex>

namespace tarnwick::players {

struct BackgroundWork::State {
    std::mutex mutex;
    std::condition_variable ended;
    int running = 0;
    bool isClosed = false;
};

BackgroundWork::BackgroundWork(dispatch::Queue& queue) : m_queue(queue), m_state(std::make_shared<State>()) {}

BackgroundWork::~BackgroundWork() { close(); }

void BackgroundWork::run(dispatch::Task task) {
    m_queue.async([state = m_state, task = std::move(task)] {
        {
            const std::lock_guard lock(state->mutex);
            if (state->isClosed)
                return;
            ++state->running;
        }
        task();
        const std::lock_guard lock(state->mutex);
        --state->running;
        state->ended.notify_all();
    });
}

void BackgroundWork::close() {
    std::unique_lock lock(m_state->mutex);
    m_state->isClosed = true;
    m_state->ended.wait(lock, [this] { return m_state->running == 0; });
}

bool BackgroundWork::isClosed() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->isClosed;
}

} // namespace tarnwick::players
