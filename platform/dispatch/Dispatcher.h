#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

namespace tarnwick::dispatch {

using Task = std::function<void()>;
using Duration = std::chrono::nanoseconds;

/// A moment on the dispatcher's monotonic clock, as the time since an origin of its own.
using Instant = std::chrono::nanoseconds;

enum class QualityOfService {
    UserInteractive, ///< somebody waits for the result: scripts sent by a command
    Default,         ///< the polling timers
    Background,      ///< nobody waits: tags, album lists, artwork
};

/// Runs tasks. Tasks of the main queue run one after the other on the main thread, in the order in
/// which they came; tasks of a global queue run at the same time on threads of its own.
class Queue {
public:
    Queue() = default;
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    virtual ~Queue() = default;

    /// Queues `task` and returns at once. May be called on any thread. A task that is still queued
    /// when its dispatcher goes is dropped.
    virtual void async(Task task) = 0;
};

/// A delayed task that may be called off until it starts. Copies refer to the same task.
class WorkItem {
public:
    /// No task: cancelling it does nothing.
    WorkItem() = default;
    explicit WorkItem(std::shared_ptr<std::atomic<bool>> cancelled) : m_cancelled(std::move(cancelled)) {}

    /// The task does not start any more; one that runs already goes on.
    void cancel() {
        if (m_cancelled)
            *m_cancelled = true;
    }

private:
    std::shared_ptr<std::atomic<bool>> m_cancelled;
};

/// A repeating timer. Destroying it cancels it.
class TimerSource {
public:
    struct State;

    explicit TimerSource(std::shared_ptr<State> state);
    TimerSource(const TimerSource&) = delete;
    TimerSource& operator=(const TimerSource&) = delete;
    ~TimerSource();

    /// No tick starts any more; one that runs already goes on.
    void cancel();

private:
    std::shared_ptr<State> m_state;
};

/// The queues, the clock and the timers.
class Dispatcher {
public:
    Dispatcher() = default;
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;
    virtual ~Dispatcher() = default;

    virtual Queue& mainQueue() = 0;
    virtual Queue& globalQueue(QualityOfService quality) = 0;

    /// Never goes backwards and does not follow changes of the wall clock.
    virtual Instant now() const = 0;

    /// Whether the caller runs on the main thread.
    virtual bool isMainThread() const = 0;

    /// Blocks the caller. Returns early, with false, when the dispatcher is being shut down.
    virtual bool sleepFor(Duration duration) = 0;

    /// Runs `task` on the global queue of `quality` and blocks the caller, without a time-out, until
    /// it has ended. Must not be called on that same queue.
    virtual void runAndWait(QualityOfService quality, Task task) = 0;

    /// Queues `task` on `queue` once `delay` is over. `queue` must be one of this dispatcher's.
    WorkItem asyncAfter(Queue& queue, Duration delay, Task task);

    /// A timer whose `tick` is queued on `queue` at once and then every `interval`, without leeway.
    /// Its ticks never overlap: those that fall due while one is queued or running are merged into
    /// one, which follows directly.
    std::unique_ptr<TimerSource> makeTimer(Queue& queue, Duration interval, Task tick);

protected:
    friend struct TimerSource::State;

    /// Calls `callback`, which only queues something, when the clock has reached `when`.
    virtual void callAt(Instant when, Task callback) = 0;
};

} // namespace tarnwick::dispatch
