#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/dispatch/SerialQueue.h"
#include "platform/power/Inhibition.h"
#include "platform/power/PowerManager.h"

namespace tarnwick::power {

/// Asks the services of the desktop and of the system, and the X server.
///
/// An assertion is a standing wish: its service is asked again when it comes back, and a better one that
/// appears later takes it over. The X server's own screen saver is suspended unless the desktop's keeps it.
class DBusPowerManager : public PowerManager {
public:
    /// How long one service may take to answer.
    static constexpr std::chrono::milliseconds timeout{1000};

    /// A service may have its name before it can answer: how often, and how much later, it is asked again.
    static constexpr int repetitions = 3;
    static constexpr dispatch::Duration timeToRepetition = std::chrono::seconds(1);

    /// Where the buses and the X server are; an empty address means the usual one, and no X server where the
    /// application is not shown by one.
    struct Places {
        QString session;
        QString system;
        QString display;
    };

    /// `dispatcher` must outlive the manager.
    explicit DBusPowerManager(dispatch::Dispatcher& dispatcher, const Places& places = {});

    /// Ends the assertions that are left.
    ~DBusPowerManager() override;

    void preventUserIdleDisplaySleep(const QString& reason, CreatedHandler created) override;
    void release(Assertion assertion) override;

private:
    class Watch;
    struct State;

    void renew(Service service, const QString& owner, int repetitionsLeft);

    dispatch::Dispatcher& m_dispatcher;
    dispatch::SerialQueue m_queue; ///< everything that may wait for a service
    const std::shared_ptr<State> m_state;
    Assertion m_last = 0;
};

} // namespace tarnwick::power
