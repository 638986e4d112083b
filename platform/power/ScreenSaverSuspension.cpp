#include "platform/power/ScreenSaverSuspension.h"

#include <xcb/screensaver.h>

#include <cstdlib>

namespace tarnwick::power {

namespace {

/// The first version of the extension that can be suspended.
constexpr unsigned major = 1, minor = 1;

bool suspend(xcb_connection_t* connection) {
    if (xcb_connection_has_error(connection) != 0)
        return false;
    const auto* extension = xcb_get_extension_data(connection, &xcb_screensaver_id);
    if (!extension || !extension->present)
        return false;
    std::free(xcb_screensaver_query_version_reply(
        connection, xcb_screensaver_query_version(connection, major, minor), nullptr));
    auto* error = xcb_request_check(connection, xcb_screensaver_suspend_checked(connection, 1));
    std::free(error);
    return !error && xcb_connection_has_error(connection) == 0;
}

} // namespace

std::unique_ptr<ScreenSaverSuspension> ScreenSaverSuspension::ask(const QByteArray& display) {
    auto* connection = xcb_connect(display.isEmpty() ? nullptr : display.constData(), nullptr);
    std::unique_ptr<ScreenSaverSuspension> suspension(new ScreenSaverSuspension(connection));
    return suspend(connection) ? std::move(suspension) : nullptr;
}

ScreenSaverSuspension::ScreenSaverSuspension(xcb_connection_t* connection) : m_connection(connection) {}

ScreenSaverSuspension::~ScreenSaverSuspension() { xcb_disconnect(m_connection); }

} // namespace tarnwick::power
