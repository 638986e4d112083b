#include "tests/desktop/sequence/Person.h"

#include <poll.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr xcb_keysym_t controlKey = 0xffe3;
constexpr std::uint32_t iconic = 3;
constexpr std::uint32_t fromPager = 2;

/// No hand presses a button again sooner.
constexpr auto nextPress = 40ms;

/// Longest that a window manager is waited for, ms.
constexpr int patience = 10'000;

template <typename Reply>
auto held(Reply* reply) {
    return std::unique_ptr<Reply, decltype(&std::free)>(reply, &std::free);
}

} // namespace

Person::Person() : m_connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(m_connection) != 0)
        return;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_root = screen->root;
    m_own = xcb_generate_id(m_connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_own, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK, &events);
}

Person::~Person() { xcb_disconnect(m_connection); }

void Person::press(xcb_keysym_t key, bool withControl) {
    if (withControl)
        fake(XCB_KEY_PRESS, codeOf(controlKey));
    hold(key, [] {});
    if (withControl)
        fake(XCB_KEY_RELEASE, codeOf(controlKey));
    xcb_flush(m_connection);
}

void Person::hold(xcb_keysym_t key, const std::function<void()>& watch) {
    fake(XCB_KEY_PRESS, codeOf(key));
    xcb_flush(m_connection);
    watch();
    // No finger is as fast as the server's clock: the next press must not bear the time of this release.
    std::this_thread::sleep_for(2ms);
    fake(XCB_KEY_RELEASE, codeOf(key));
    xcb_flush(m_connection);
    std::this_thread::sleep_for(2ms);
}

void Person::moveTo(QPoint place) {
    fake(XCB_MOTION_NOTIFY, 0, place);
    catchUp();
}

void Person::pressButton(std::uint8_t button, bool isDown) {
    fake(isDown ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button);
    catchUp();
}

void Person::click(QPoint place, std::uint8_t button) {
    moveTo(place);
    pressButton(button, true);
    pressButton(button, false);
}

void Person::drag(QPoint from, QPoint way) {
    constexpr int steps = 6;
    moveTo(from);
    pressButton(XCB_BUTTON_INDEX_1, true);
    for (int step = 1; step <= steps; ++step) {
        moveTo(from + way * step / steps);
        std::this_thread::sleep_for(8ms);
    }
    pressButton(XCB_BUTTON_INDEX_1, false);
    std::this_thread::sleep_for(nextPress);
}

void Person::minimise(xcb_window_t window) { tell(window, "WM_CHANGE_STATE", {iconic}); }

void Person::activate(xcb_window_t window) { tell(window, "_NET_ACTIVE_WINDOW", {fromPager}); }

void Person::place(xcb_window_t window, const QRect& where) {
    const std::array<std::uint32_t, 4> values{std::uint32_t(where.x()), std::uint32_t(where.y()),
                                              std::uint32_t(where.width()), std::uint32_t(where.height())};
    xcb_configure_window(m_connection, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    catchUp();
}

void Person::catchUp() {
    const xcb_atom_t answer = atom("_NET_FRAME_EXTENTS");
    xcb_delete_property(m_connection, m_own, answer);
    tell(m_own, "_NET_REQUEST_FRAME_EXTENTS", {});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(patience);
    while (std::chrono::steady_clock::now() < deadline) {
        while (const auto event = held(xcb_poll_for_event(m_connection))) {
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && change->atom == answer &&
                change->state == XCB_PROPERTY_NEW_VALUE)
                return;
        }
        pollfd waiting{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&waiting, 1, 100);
    }
    std::fprintf(stderr, "the window manager does not answer\n");
    std::exit(2);
}

xcb_window_t Person::keyboard() {
    const auto focus =
        held(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return focus ? focus->focus : xcb_window_t(XCB_NONE);
}

QList<xcb_window_t> Person::stacking() {
    QList<xcb_window_t> windows;
    const auto reply = held(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, 0, m_root, atom("_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW, 0, 100),
        nullptr));
    if (reply) {
        const auto* first = static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
        windows = {first, first + xcb_get_property_value_length(reply.get()) / int(sizeof(xcb_window_t))};
    }
    return windows;
}

void Person::fake(std::uint8_t type, std::uint8_t detail, QPoint place) {
    xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, m_root, std::int16_t(place.x()),
                        std::int16_t(place.y()), 0);
}

xcb_keycode_t Person::codeOf(xcb_keysym_t key) {
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    const auto count = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto reply = held(xcb_get_keyboard_mapping_reply(
        m_connection, xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count), nullptr));
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (int code = 0; code < count; ++code)
        if (symbols[code * reply->keysyms_per_keycode] == key)
            return xcb_keycode_t(setup->min_keycode + code);
    return 0;
}

xcb_atom_t Person::atom(const char* name) {
    const auto reply = held(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, std::uint16_t(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void Person::tell(xcb_window_t window, const char* type, const std::array<std::uint32_t, 5>& words) {
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::copy(words.begin(), words.end(), message.data.data32);
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}

} // namespace tarnwick
