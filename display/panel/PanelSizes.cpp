#include "display/panel/PanelSizes.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr double trailingMargin = 40;          // the panel's 20 and the lines' own 20
constexpr double trailingMarginOfScreen = 115; // beside a record in full screen
constexpr double leastMargin = 12;

} // namespace

double PanelFrame::inkEdge() const {
    return window.width() - (fullScreen && !cassette ? trailingMarginOfScreen : trailingMargin);
}

double PanelFrame::widestLine() const {
    const double column = std::max(100.0, 0.6 * window.width()) - 20;
    const double room = inkEdge() - leastMargin - (list ? window.width() / 2 : 0);
    return std::max(0.0, std::min(column, room));
}

PanelSizes panelSizes(bool fullScreen) {
    if (fullScreen)
        return {.base = 24, .large = 38, .medium = 38, .clock = 76, .date = 36};
    return {};
}

WrapLimits wrapLimits(double width, bool fullScreen) {
    if (width < 850)
        return {.title = 22, .artist = 18, .album = 24, .comment = 40};
    if (width < 1400)
        return {.title = 36, .artist = 28, .album = 28, .comment = 38};
    if (fullScreen)
        return {.title = 38, .artist = 38, .album = 44, .comment = 56};
    return {.title = 44, .artist = 46, .album = 44, .comment = 44};
}

} // namespace tarnwick
