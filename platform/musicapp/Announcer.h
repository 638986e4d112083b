#pragma once

#include "platform/musicapp/MusicApplication.h"

#include <mutex>

namespace tarnwick::musicapp {

/// Tells one handler what changed.
class Announcer {
public:
    /// Returns when the handler before is not running any more; not to be called from a handler.
    void setHandler(MusicApplication::ChangeHandler handler) {
        const std::lock_guard lock(m_mutex);
        m_handler = std::move(handler);
    }

    /// Calls the handler on this thread, unless nothing changed.
    void announce(Changes changes) {
        const std::lock_guard lock(m_mutex);
        if (changes && m_handler)
            m_handler(changes);
    }

private:
    std::mutex m_mutex;
    MusicApplication::ChangeHandler m_handler;
};

} // namespace tarnwick::musicapp
