#pragma once

#include <QHash>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace tarnwick::menus {

/// One line of a menu: a command, a menu of its own, or a separator.
struct Entry {
    QString title;                ///< shown as it stands
    QKeySequence shortcut{};      ///< may be empty
    std::function<void()> action; ///< empty for a menu and a separator
    QList<Entry> entries{};       ///< what stands in the menu
    bool isMenu = false;          ///< a menu may be empty
    bool isSeparator = false;
    bool isOfWindow = false; ///< acts on the main window, so its shortcut holds there alone

    static Entry command(QString title, std::function<void()> action, const QKeySequence& shortcut = {});
    static Entry menu(QString title, QList<Entry> entries);
    static Entry separator();
};

/// Menus with their entries. Every entry has a number: the whole is 0, and its entries are counted
/// from 1, each menu before what stands in it.
class MenuModel : public QObject {
    Q_OBJECT

public:
    void setEntries(QList<Entry> entries);

    /// Does what the entry is for. A number that no command has does nothing.
    void trigger(int number);

    const QList<Entry>& entries() const { return m_root.entries; }

    /// The entry with this number; null when there is none. 0 is a menu that holds all.
    const Entry* entry(int number) const;

    /// The numbers of what stands in the menu `number`.
    QList<int> numbersIn(int number) const;

Q_SIGNALS:
    void changed();

    /// A menu is about to be opened; who knows of newer entries sets them now.
    void aboutToShow();

private:
    void count(const Entry& entry);

    Entry m_root = Entry::menu({}, {});
    QList<const Entry*> m_byNumber{&m_root};
    QHash<int, QList<int>> m_inside;
};

} // namespace tarnwick::menus
