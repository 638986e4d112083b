#include "music/ChangePass.h"

namespace tarnwick {

namespace {

// Handlers that answer each other without end must not hang the display.
constexpr int maximumRounds = 16;

} // namespace

void ChangePass::deliver() {
    if (m_delivering)
        return;
    m_delivering = true;
    for (int round = 0; round < maximumRounds; ++round) {
        std::vector<Watcher*> changed;
        for (const auto& watcher : m_watchers)
            if (watcher->takeChange())
                changed.push_back(watcher.get());
        if (changed.empty())
            break;
        for (Watcher* watcher : changed)
            watcher->tell();
    }
    m_delivering = false;
}

} // namespace tarnwick
