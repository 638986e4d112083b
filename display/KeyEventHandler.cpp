#include "display/KeyEventHandler.h"

#include "platform/windows/KeyCodes.h"

#include <QKeyEvent>

namespace tarnwick {

void KeyEventHandler::keyPressEvent(QKeyEvent* event) {
    using namespace windows;
    const auto code = hardwareKeyCode(event->key());
    const bool isOurs = code == ReturnKey || code == EscapeKey || code == DownArrowKey || code == UpArrowKey;
    event->setAccepted(isOurs); // the arrows of the menus and the keys of the bar are others'
    if (isOurs)
        Q_EMIT keyDown(*code);
}

} // namespace tarnwick
