#pragma once

#include <functional>
#include <mutex>

namespace tarnwick::players {

/// Tells one handler the news.
template <typename News>
class Announcer {
public:
    using Handler = std::function<void(News)>;

    /// Returns when the handler before is not running any more; not to be called from a handler.
    void setHandler(Handler handler) {
        const std::lock_guard lock(m_mutex);
        m_handler = std::move(handler);
    }

    /// Calls the handler on this thread.
    void announce(const News& news) {
        const std::lock_guard lock(m_mutex);
        if (m_handler)
            m_handler(news);
    }

private:
    std::mutex m_mutex;
    Handler m_handler;
};

} // namespace tarnwick::players
