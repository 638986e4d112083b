#include "platform/windows/SizeHints.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace tarnwick::windows {

namespace {

// The property is a list of 32-bit words in an order that the inter-client conventions fix.
constexpr std::size_t wordCount = 18;
constexpr std::size_t flagsWord = 0;
constexpr std::size_t leastRatioWord = 11;
constexpr std::size_t greatestRatioWord = 13;
constexpr std::uint32_t ratioFlag = 1U << 7;

using Words = std::array<std::uint32_t, wordCount>;

} // namespace

void hintAtAspectRatio(const QWindow& window, QSize ratio) {
    if (QGuiApplication::platformName() != QLatin1String("xcb") || !window.handle() || ratio.isEmpty())
        return;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return;
    xcb_connection_t* connection = x11->connection();
    const auto id = static_cast<xcb_window_t>(window.winId());
    const auto request =
        xcb_get_property(connection, 0, id, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 0, wordCount);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection, request, nullptr), &std::free);
    Words words{};
    if (reply && reply->format == 32) {
        const auto* held = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        std::copy_n(held, std::min<std::size_t>(reply->value_len, wordCount), words.begin());
    }
    words[flagsWord] |= ratioFlag;
    for (const std::size_t at : {leastRatioWord, greatestRatioWord}) {
        words[at] = static_cast<std::uint32_t>(ratio.width());
        words[at + 1] = static_cast<std::uint32_t>(ratio.height());
    }
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, wordCount, words.data());
    xcb_flush(connection);
}

} // namespace tarnwick::windows
