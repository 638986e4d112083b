#include "platform/windows/HeldKeys.h"

#include <QGuiApplication>
#include <QInputMethodQueryEvent>

namespace tarnwick::windows {

namespace {

/// What tells the keys of the keyboard apart; where the platform has no codes, what they mean.
quint32 codeOf(const QKeyEvent& event) {
    return event.nativeScanCode() ? event.nativeScanCode() : quint32(event.key());
}

bool moves(int key) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_VolumeUp:
    case Qt::Key_VolumeDown:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return false;
    }
}

bool edits(const QKeyEvent& press) {
    switch (press.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return true;
    default:
        return !(press.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) &&
               !press.text().isEmpty() && press.text().front().isPrint();
    }
}

/// Whether a text is being written.
bool isTyping() {
    QObject* focus = QGuiApplication::focusObject();
    if (!focus)
        return false;
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QCoreApplication::sendEvent(focus, &query);
    return query.value(Qt::ImEnabled).toBool();
}

} // namespace

HeldKeys::HeldKeys() { qGuiApp->installEventFilter(this); }

HeldKeys::~HeldKeys() { qGuiApp->removeEventFilter(this); }

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    const bool isPress = type == QEvent::ShortcutOverride || type == QEvent::KeyPress;
    if (!watched->isWindowType() || !(isPress || type == QEvent::KeyRelease))
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!isPress) {
        m_releases.insert(codeOf(key), key.timestamp());
        return false;
    }
    if (!isRepeat(key) || moves(key.key()) || (edits(key) && isTyping()))
        return false;
    event->accept(); // else it is looked for among the shortcuts
    return true;
}

bool HeldKeys::isRepeat(const QKeyEvent& press) const {
    return press.isAutoRepeat() ||
           (press.timestamp() != 0 && m_releases.value(codeOf(press)) == press.timestamp());
}

} // namespace tarnwick::windows
