#include "platform/windows/X11Desktop.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace tarnwick::windows {

namespace {

constexpr const char* startupVariable = "DESKTOP_STARTUP_ID";

// Of the inter-client conventions: where the initial state stands in WM_HINTS, and the flag that says it
// does.
constexpr std::size_t hintWords = 9;
constexpr std::size_t initialStateWord = 2;
constexpr std::uint32_t initialStateFlag = 1U << 1;
constexpr std::uint32_t normalState = 1;

constexpr std::uint32_t fromApplication = 1; ///< who asks for activation

xcb_connection_t* connectionToX11() {
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t rootOf(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    const auto request = xcb_intern_atom(connection, 0, std::uint16_t(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, request, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

template <std::size_t Count>
bool readWords(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
               std::array<std::uint32_t, Count>& words) {
    const auto request = xcb_get_property(connection, 0, window, property, XCB_ATOM_ANY, 0, Count);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection, request, nullptr), &std::free);
    if (!reply || reply->format != 32 || reply->value_len == 0)
        return false;
    const auto* held = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    std::copy_n(held, std::min<std::size_t>(reply->value_len, Count), words.begin());
    return true;
}

/// Ends the desktop's sign that something is being started.
void endStartup(xcb_connection_t* connection, const QByteArray& id) {
    QByteArray quoted = id;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    const QByteArray text = "remove: ID=\"" + quoted + '"' + '\0';
    const xcb_window_t sender = xcb_generate_id(connection);
    const xcb_window_t root = rootOf(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, sender, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = atom(connection, "_NET_STARTUP_INFO_BEGIN");
    for (qsizetype at = 0; at < text.size(); at += qsizetype(sizeof message.data.data8)) {
        const QByteArray part = text.mid(at, sizeof message.data.data8);
        std::fill(std::begin(message.data.data8), std::end(message.data.data8), 0);
        std::copy(part.begin(), part.end(), message.data.data8);
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&message));
        message.type = atom(connection, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(connection, sender);
}

} // namespace

bool hasWindowManager() {
    xcb_connection_t* connection = connectionToX11();
    if (!connection)
        return true;
    std::array<std::uint32_t, 1> manager{};
    std::array<std::uint32_t, 1> itself{};
    const xcb_atom_t check = atom(connection, "_NET_SUPPORTING_WM_CHECK");
    return readWords(connection, rootOf(connection), check, manager) && // one that crashed has left it there
           readWords(connection, manager[0], check, itself) && itself == manager;
}

void hintAtOrdinaryStart(const QWindow& window) {
    xcb_connection_t* connection = connectionToX11();
    if (!connection || !window.handle())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    std::array<std::uint32_t, hintWords> words{};
    if (!readWords(connection, id, XCB_ATOM_WM_HINTS, words))
        return;
    words[0] |= initialStateFlag;
    words[initialStateWord] = normalState;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32,
                        hintWords, words.data());
}

void restateWhatBelongsTo(const QWindow& window) {
    xcb_connection_t* connection = connectionToX11();
    if (!connection || !window.handle())
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const auto all = QGuiApplication::topLevelWindows();
    for (const QWindow* other : all)
        if (other->transientParent() == &window && other->isVisible())
            xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(other->winId()),
                                XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1, &id);
}

void useStartupId(const QWindow& window) {
    const QByteArray id = qgetenv(startupVariable);
    xcb_connection_t* connection = connectionToX11();
    if (id.isEmpty() || !connection || !window.handle())
        return;
    qunsetenv(startupVariable);
    const auto target = static_cast<xcb_window_t>(window.winId());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, target, atom(connection, "_NET_STARTUP_ID"),
                        atom(connection, "UTF8_STRING"), 8, std::uint32_t(id.size()), id.constData());
    if (const auto time = timeOfStartupId(id)) {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = target;
        message.type = atom(connection, "_NET_ACTIVE_WINDOW");
        message.data.data32[0] = fromApplication;
        message.data.data32[1] = *time;
        xcb_send_event(connection, 0, rootOf(connection),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
    }
    endStartup(connection, id);
    xcb_flush(connection);
}

std::optional<std::uint32_t> timeOfStartupId(const QByteArray& startupId) {
    const QByteArray mark = "_TIME";
    const qsizetype at = startupId.lastIndexOf(mark);
    bool isNumber = false;
    const qulonglong time = at < 0 ? 0 : startupId.mid(at + mark.size()).toULongLong(&isNumber);
    return isNumber ? std::optional(std::uint32_t(time)) : std::nullopt;
}

} // namespace tarnwick::windows
