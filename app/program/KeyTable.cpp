#include "app/program/KeyTable.h"

#include <array>

namespace tarnwick {

namespace {

struct Row {
    const char* keys;
    const char* does;
};

constexpr std::array ofDisplay{
    Row{"Space", "Play/Pause"},
    Row{"Shift+←  Shift+→", "10 Seconds Back, Forward"},
    Row{"Page Up  Page Down", "Louder, Quieter"},
    Row{"Return", "Track List, Play the Chosen Track"},
    Row{"↑  ↓", "Choose a Track"},
    Row{"Tab", "Control Bar"},
    Row{"Esc", "Back, Leave Full Screen"},
    Row{"Menu  Shift+F10", "Menu"},
    Row{"F1  ?", "Keys"},
};

QString readable(const QKeySequence& keys) {
    QString text = keys.toString(QKeySequence::NativeText);
    return text.replace(QStringLiteral("Left"), QStringLiteral("←"))
        .replace(QStringLiteral("Right"), QStringLiteral("→"));
}

void addFrom(const menus::MenuModel& menu, int number, QVariantList& rows) {
    const menus::Entry& entry = *menu.entry(number);
    if (!entry.shortcut.isEmpty())
        rows.append(QVariantMap{{QStringLiteral("keys"), readable(entry.shortcut)},
                                {QStringLiteral("does"), entry.title}});
    for (const int inside : menu.numbersIn(number))
        addFrom(menu, inside, rows);
}

} // namespace

QVariantList keyTable(const menus::MenuModel& menu) {
    QVariantList rows;
    for (const Row& row : ofDisplay)
        rows.append(QVariantMap{{QStringLiteral("keys"), QString::fromUtf8(row.keys)},
                                {QStringLiteral("does"), QString::fromUtf8(row.does)}});
    addFrom(menu, 0, rows);
    return rows;
}

} // namespace tarnwick
