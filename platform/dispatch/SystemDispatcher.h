#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/dispatch/TaskQueue.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

namespace tarnwick::dispatch {

/// The dispatcher of the running program. Its main queue runs on the Qt event loop of the thread
/// that constructs it, which must also destroy it.
class SystemDispatcher : public Dispatcher {
public:
    SystemDispatcher();

    ~SystemDispatcher() override;

    /// Wakes sleepers, drops what is queued for the global queues or for later, and waits for the tasks
    /// that run. Nothing is queued there any more. So that what tasks refer to can be destroyed before
    /// the dispatcher; its destructor does it otherwise.
    void shutDown();

    Queue& mainQueue() override;
    Queue& globalQueue(QualityOfService quality) override;
    Instant now() const override;
    bool isMainThread() const override;
    bool sleepFor(Duration duration) override;
    void runAndWait(QualityOfService quality, Task task) override;

protected:
    void callAt(Instant when, Task callback) override;

private:
    class MainQueue;

    void keepTime();

    const std::thread::id m_mainThread;
    std::unique_ptr<MainQueue> m_main;
    TaskQueue m_userInteractive;
    TaskQueue m_default;
    TaskQueue m_background;

    std::mutex m_mutex;
    std::condition_variable m_timeChanged;
    std::multimap<Instant, Task> m_due;
    bool m_stopping = false;
    std::thread m_timeKeeper;
};

} // namespace tarnwick::dispatch
