#pragma once

#include <QtGlobal>

#include <optional>

namespace tarnwick::windows {

/// The hardware codes of the keys that the display knows.
enum KeyCode : int {
    ReturnKey = 36,
    EscapeKey = 53,
    LeftArrowKey = 123,
    RightArrowKey = 124,
    DownArrowKey = 125,
    UpArrowKey = 126,
};

/// The hardware code for one of Qt's keys; none for a key that the table lacks.
std::optional<int> hardwareKeyCode(int qtKey);

} // namespace tarnwick::windows
