#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <map>

namespace tarnwick::dispatch {

/// A dispatcher whose clock moves only when `advance` moves it. Everything runs on the calling
/// thread, in the order of due time and then of queueing, so that ten seconds take none and every
/// run is the same.
class VirtualDispatcher : public Dispatcher {
public:
    VirtualDispatcher();
    ~VirtualDispatcher() override;

    Queue& mainQueue() override;
    Queue& globalQueue(QualityOfService quality) override;
    Instant now() const override;

    /// True in tasks of the main queue and in the test's own code, false in those of global queues.
    bool isMainThread() const override;

    /// Lets the time pass for everybody else; the caller goes on afterwards.
    bool sleepFor(Duration duration) override;
    void runAndWait(QualityOfService quality, Task task) override;

    /// Moves the clock forward by `duration` and runs everything that falls due, at its own time.
    void advance(Duration duration);

    /// Runs what is due now, and what that queues for now.
    void runUntilIdle() { advance(Duration::zero()); }

protected:
    void callAt(Instant when, Task callback) override;

private:
    class VirtualQueue;

    void runOn(const Queue* queue, const Task& task);

    std::unique_ptr<VirtualQueue> m_main;
    std::map<QualityOfService, std::unique_ptr<VirtualQueue>> m_global;
    std::multimap<Instant, Task> m_due; // equal times keep the order of insertion
    Instant m_now{0};
    const Queue* m_current = nullptr;
};

} // namespace tarnwick::dispatch
