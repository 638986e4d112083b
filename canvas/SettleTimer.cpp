#include "canvas/SettleTimer.h"

#include "canvas/RenderQueue.h"

namespace tarnwick {

SettleTimer::SettleTimer(std::function<void()> settled) : m_settled(std::move(settled)) {}

void SettleTimer::start() {
    renderqueue::later(settleTime, [this, starts = std::weak_ptr(m_starts), mine = ++*m_starts] {
        if (const auto now = starts.lock(); now && *now == mine)
            m_settled();
    });
}

void SettleTimer::stop() { ++*m_starts; }

} // namespace tarnwick
