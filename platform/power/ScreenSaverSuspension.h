#pragma once

#include <QByteArray>

#include <memory>

struct xcb_connection_t;

namespace tarnwick::power {

/// Keeps an X server from blanking and switching off its screens, as long as it lives.
class ScreenSaverSuspension {
public:
    /// Asks the server of `display` (empty: the usual one) and blocks until it has answered; null when there
    /// is none or it does not know how.
    static std::unique_ptr<ScreenSaverSuspension> ask(const QByteArray& display);

    ScreenSaverSuspension(const ScreenSaverSuspension&) = delete;
    ScreenSaverSuspension& operator=(const ScreenSaverSuspension&) = delete;
    ~ScreenSaverSuspension();

private:
    explicit ScreenSaverSuspension(xcb_connection_t* connection);

    xcb_connection_t* const
        m_connection; ///< nobody else's: the server ends what its client asked for with it
};

} // namespace tarnwick::power
