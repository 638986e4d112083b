#include "platform/windows/KeyCodes.h"

#include <Qt>

#include <algorithm>
#include <array>

namespace tarnwick::windows {

namespace {

struct Entry {
    Qt::Key key;
    int code;
};

constexpr std::array keys{
    Entry{Qt::Key_Return, ReturnKey},  Entry{Qt::Key_Escape, EscapeKey},
    Entry{Qt::Key_Left, LeftArrowKey}, Entry{Qt::Key_Right, RightArrowKey},
    Entry{Qt::Key_Down, DownArrowKey}, Entry{Qt::Key_Up, UpArrowKey},
    Entry{Qt::Key_Space, 49},          Entry{Qt::Key_Tab, 48},
    Entry{Qt::Key_Enter, 76}, // of the number pad
    Entry{Qt::Key_PageUp, 116},        Entry{Qt::Key_PageDown, 121},
    Entry{Qt::Key_Home, 115},          Entry{Qt::Key_End, 119},
    Entry{Qt::Key_Backspace, 51},      Entry{Qt::Key_Delete, 117},
};

} // namespace

std::optional<int> hardwareKeyCode(int qtKey) {
    const auto found =
        std::find_if(keys.begin(), keys.end(), [qtKey](const Entry& entry) { return entry.key == qtKey; });
    return found == keys.end() ? std::nullopt : std::optional(found->code);
}

} // namespace tarnwick::windows
