#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/power/PowerManager.h"

#include <memory>

namespace tarnwick::power {

/// Asks the services of the desktop and of the system.
class DBusPowerManager : public PowerManager {
public:
    /// How long one service may take to answer.
    static constexpr std::chrono::milliseconds timeout{1000};

    /// Where the buses are; an empty address means the usual one.
    struct Buses {
        QString session;
        QString system;
    };

    /// `dispatcher` must outlive the manager.
    explicit DBusPowerManager(dispatch::Dispatcher& dispatcher, Buses buses = {});

    /// Ends the assertions that are left.
    ~DBusPowerManager() override;

    void preventUserIdleDisplaySleep(const QString& reason, CreatedHandler created) override;
    void release(Assertion assertion) override;

private:
    struct State;

    dispatch::Dispatcher& m_dispatcher;
    const std::shared_ptr<State> m_state;
};

} // namespace tarnwick::power
