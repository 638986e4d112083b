#include "app/program/MenuShortcuts.h"

namespace tarnwick {

namespace {

/// Function keys stand for nothing else, so they need no modifier.
bool isPlain(const QKeySequence& sequence) {
    const QKeyCombination keys = sequence[0];
    return keys.keyboardModifiers() == Qt::NoModifier &&
           !(keys.key() >= Qt::Key_F1 && keys.key() <= Qt::Key_F35);
}

} // namespace

MenuShortcuts::MenuShortcuts(menus::MenuModel& model, QWindow& window) : m_model(model), m_window(window) {
    connect(&model, &menus::MenuModel::changed, this, &MenuShortcuts::rebuild);
    rebuild();
}

void MenuShortcuts::setPlainKeysEnabled(bool enabled) {
    m_plainKeysEnabled = enabled;
    for (const auto& shortcut : m_shortcuts)
        shortcut->setEnabled(enabled || !isPlain(shortcut->key()));
}

void MenuShortcuts::rebuild() {
    m_shortcuts.clear();
    add(0);
}

void MenuShortcuts::add(int number) {
    const menus::Entry* entry = m_model.entry(number);
    if (entry && !entry->shortcut.isEmpty()) {
        const bool plain = isPlain(entry->shortcut);
        auto shortcut = std::make_unique<QShortcut>(&m_window);
        shortcut->setKey(entry->shortcut);
        shortcut->setContext(plain || entry->isOfWindow ? Qt::WindowShortcut : Qt::ApplicationShortcut);
        shortcut->setAutoRepeat(false); // a key held down would skip through the album
        shortcut->setEnabled(m_plainKeysEnabled || !plain);
        connect(
            shortcut.get(), &QShortcut::activated, this,
            // After the key: the command may change the menus and with them this shortcut.
            [this, number] { m_model.trigger(number); }, Qt::QueuedConnection);
        m_shortcuts.push_back(std::move(shortcut));
    }
    for (const int inside : m_model.numbersIn(number))
        add(inside);
}

} // namespace tarnwick
