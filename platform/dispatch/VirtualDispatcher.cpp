#include "platform/dispatch/VirtualDispatcher.h"

#include <algorithm>
#include <utility>

namespace tarnwick::dispatch {

class VirtualDispatcher::VirtualQueue : public Queue {
public:
    explicit VirtualQueue(VirtualDispatcher& dispatcher) : m_dispatcher(dispatcher) {}

    void async(Task task) override {
        m_dispatcher.callAt(m_dispatcher.m_now,
                            [this, task = std::move(task)] { m_dispatcher.runOn(this, task); });
    }

private:
    VirtualDispatcher& m_dispatcher;
};

VirtualDispatcher::VirtualDispatcher() : m_main(std::make_unique<VirtualQueue>(*this)) {
    for (const auto quality :
         {QualityOfService::UserInteractive, QualityOfService::Default, QualityOfService::Background})
        m_global.emplace(quality, std::make_unique<VirtualQueue>(*this));
    m_current = m_main.get();
}

VirtualDispatcher::~VirtualDispatcher() = default;

Queue& VirtualDispatcher::mainQueue() { return *m_main; }

Queue& VirtualDispatcher::globalQueue(QualityOfService quality) { return *m_global.at(quality); }

Instant VirtualDispatcher::now() const { return m_now; }

bool VirtualDispatcher::isMainThread() const { return m_current == m_main.get(); }

bool VirtualDispatcher::sleepFor(Duration duration) {
    advance(duration);
    return true;
}

void VirtualDispatcher::runAndWait(QualityOfService quality, Task task) {
    runOn(m_global.at(quality).get(), task);
}

void VirtualDispatcher::advance(Duration duration) {
    const Queue* const caller = m_current;
    const Instant end = m_now + duration;
    // A task may sleep past the end; what falls due meanwhile still has its turn.
    while (!m_due.empty() && m_due.begin()->first <= std::max(end, m_now)) {
        const auto first = m_due.begin();
        if (first->first > m_now)
            m_now = first->first;
        const Task callback = std::move(first->second);
        m_due.erase(first);
        callback();
    }
    m_now = std::max(end, m_now);
    m_current = caller;
}

void VirtualDispatcher::callAt(Instant when, Task callback) { m_due.emplace(when, std::move(callback)); }

void VirtualDispatcher::runOn(const Queue* queue, const Task& task) {
    const Queue* const caller = std::exchange(m_current, queue);
    task();
    m_current = caller;
}

} // namespace tarnwick::dispatch
