#include "platform/dispatch/Dispatcher.h"

#include <mutex>

namespace tarnwick::dispatch {

/// What a timer shares with the callbacks and ticks that are under way.
struct TimerSource::State : std::enable_shared_from_this<State> {
    State(Dispatcher& dispatcher_, Queue& queue_, Duration interval_, Task tick_)
        : dispatcher(dispatcher_), queue(queue_), interval(interval_), tick(std::move(tick_)) {}

    void scheduleNext(Instant when) {
        dispatcher.callAt(when, [weak = weak_from_this(), when] {
            if (const auto state = weak.lock(); state && state->fallDue())
                state->scheduleNext(when + state->interval);
        });
    }

    /// False when the timer has been cancelled.
    bool fallDue() {
        const std::lock_guard lock(mutex);
        if (cancelled)
            return false;
        if (outstanding)
            missed = true;
        else
            queueTick();
        return true;
    }

    void queueTick() {
        outstanding = true;
        queue.async([state = shared_from_this()] { state->runTick(); });
    }

    void runTick() {
        {
            const std::lock_guard lock(mutex);
            if (cancelled)
                return;
        }
        tick();
        const std::lock_guard lock(mutex);
        outstanding = false;
        if (missed && !cancelled) {
            missed = false;
            queueTick();
        }
    }

    Dispatcher& dispatcher;
    Queue& queue;
    const Duration interval;
    const Task tick;
    std::mutex mutex;
    bool outstanding = false;
    bool missed = false;
    bool cancelled = false;
};

TimerSource::TimerSource(std::shared_ptr<State> state) : m_state(std::move(state)) {}

TimerSource::~TimerSource() { cancel(); }

void TimerSource::cancel() {
    const std::lock_guard lock(m_state->mutex);
    m_state->cancelled = true;
}

WorkItem Dispatcher::asyncAfter(Queue& queue, Duration delay, Task task) {
    auto cancelled = std::make_shared<std::atomic<bool>>(false);
    Task unlessCancelled = [cancelled, task = std::move(task)] {
        if (!*cancelled)
            task();
    };
    callAt(now() + delay, [&queue, queued = std::move(unlessCancelled)] { queue.async(queued); });
    return WorkItem(cancelled);
}

std::unique_ptr<TimerSource> Dispatcher::makeTimer(Queue& queue, Duration interval, Task tick) {
    auto state = std::make_shared<TimerSource::State>(*this, queue, interval, std::move(tick));
    const Instant start = now();
    state->fallDue();
    state->scheduleNext(start + interval);
    return std::make_unique<TimerSource>(std::move(state));
}

} // namespace tarnwick::dispatch
