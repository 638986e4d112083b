#include "platform/menus/MenuModel.h"

namespace tarnwick::menus {

Entry Entry::command(QString title, std::function<void()> action, const QKeySequence& shortcut) {
    return {.title = std::move(title), .shortcut = shortcut, .action = std::move(action)};
}

Entry Entry::menu(QString title, QList<Entry> entries) {
    return {.title = std::move(title), .action = {}, .entries = std::move(entries), .isMenu = true};
}

Entry Entry::separator() { return {.title = {}, .action = {}, .isSeparator = true}; }

void MenuModel::setEntries(QList<Entry> entries) {
    m_root.entries = std::move(entries);
    m_byNumber.clear();
    m_inside.clear();
    count(m_root);
    Q_EMIT changed();
}

void MenuModel::trigger(int number) {
    const Entry* chosen = entry(number);
    if (!chosen || !chosen->action)
        return;
    const auto action = chosen->action; // it may change the menus
    action();
}

const Entry* MenuModel::entry(int number) const { return m_byNumber.value(number); }

QList<int> MenuModel::numbersIn(int number) const { return m_inside.value(number); }

void MenuModel::count(const Entry& entry) {
    const int number = int(m_byNumber.size());
    m_byNumber.append(&entry);
    QList<int> inside;
    for (const Entry& child : entry.entries) {
        inside.append(int(m_byNumber.size()));
        count(child);
    }
    m_inside.insert(number, inside);
}

} // namespace tarnwick::menus
