#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tarnwick {

/// Tells watchers what has changed, in one pass after a task that may have assigned several fields.
///
/// So a watcher of the title sees the album and the cover of the same reply. Each watcher gets the
/// value of the last pass and the present one, in the order in which the watchers were declared.
/// Main thread only.
class ChangePass {
public:
    /// Calls `handler` with the old and the new value in each pass in which what `read` returns
    /// differs from what it returned in the pass before. `read` is called once at once.
    template <typename Read, typename Handler>
    void watch(Read read, Handler handler) {
        m_watchers.push_back(
            std::make_unique<ValueWatcher<Read, Handler>>(std::move(read), std::move(handler)));
    }

    /// Compares all values first and then calls the handlers of those that differ. What a handler
    /// changes is told in a further pass before this returns; a handler that calls it is ignored.
    void deliver();

private:
    struct Watcher {
        virtual ~Watcher() = default;
        virtual bool takeChange() = 0;
        virtual void tell() = 0;
    };

    template <typename Read, typename Handler>
    struct ValueWatcher : Watcher {
        using Value = std::decay_t<std::invoke_result_t<Read>>;

        ValueWatcher(Read read_, Handler handler_)
            : read(std::move(read_)), handler(std::move(handler_)), last(read()), before(last) {}

        bool takeChange() override {
            if (Value now = read(); !(now == last)) {
                before = std::exchange(last, std::move(now));
                return true;
            }
            return false;
        }
        void tell() override {
            const Value now = last; // the handler may start another pass of changes
            handler(std::as_const(before), now);
        }

        Read read;
        Handler handler;
        Value last;
        Value before;
    };

    std::vector<std::unique_ptr<Watcher>> m_watchers;
    bool m_delivering = false;
};

} // namespace tarnwick
