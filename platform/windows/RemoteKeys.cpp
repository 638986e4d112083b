#include "platform/windows/RemoteKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <optional>

namespace tarnwick::windows {

namespace {

std::optional<Qt::Key> meaningOf(int key) {
    switch (key) {
    case Qt::Key_Back:
        return Qt::Key_Escape;
    case Qt::Key_Select:
    case Qt::Key_Enter:
        return Qt::Key_Return;
    default:
        return std::nullopt;
    }
}

} // namespace

RemoteKeys::RemoteKeys() { qGuiApp->installEventFilter(this); }

RemoteKeys::~RemoteKeys() { qGuiApp->removeEventFilter(this); }

bool RemoteKeys::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType() ||
        (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const auto meaning = meaningOf(key.key());
    if (!meaning)
        return false;
    QKeyEvent meant(event->type(), *meaning, key.modifiers() & ~Qt::KeypadModifier, key.nativeScanCode(),
                    key.nativeVirtualKey(), key.nativeModifiers(), key.text(), key.isAutoRepeat());
    meant.setTimestamp(key.timestamp());
    QCoreApplication::sendEvent(watched, &meant);
    event->setAccepted(meant.isAccepted());
    return true;
}

} // namespace tarnwick::windows
