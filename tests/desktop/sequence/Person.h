#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QRect>
#include <xcb/xcb.h>

#include <array>
#include <functional>

namespace tarnwick {

/// A person at an X screen: presses keys and buttons, and sees what the window manager does. Everything goes
/// through the server as from a real device.
class Person {
public:
    Person();
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;
    ~Person();

    /// Presses `key` (a keysym), with Control held or not, and lets go of it.
    void press(xcb_keysym_t key, bool withControl = false);

    /// Presses `key`, and lets go of it when `watch` returns.
    void hold(xcb_keysym_t key, const std::function<void()>& watch);

    void moveTo(QPoint place);
    void pressButton(std::uint8_t button, bool isDown);
    void click(QPoint place, std::uint8_t button);

    /// Holds the left button from `from`, in steps, by `way`.
    void drag(QPoint from, QPoint way);

    /// Asks the window manager, as a taskbar does.
    void minimise(xcb_window_t window);
    void activate(xcb_window_t window);
    void place(xcb_window_t window, const QRect& where);

    /// Returns when the server and the window manager have done all that came before.
    void catchUp();

    /// The window that gets the keys.
    xcb_window_t keyboard();

    /// The application's windows, from the lowest.
    QList<xcb_window_t> stacking();

private:
    void fake(std::uint8_t type, std::uint8_t detail, QPoint place = {});
    xcb_keycode_t codeOf(xcb_keysym_t key);
    xcb_atom_t atom(const char* name);
    void tell(xcb_window_t window, const char* type, const std::array<std::uint32_t, 5>& words);

    xcb_connection_t* m_connection;
    xcb_window_t m_root = 0;
    xcb_window_t m_own = 0; ///< never shown; the window manager is asked about it
};

} // namespace tarnwick
