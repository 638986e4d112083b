#pragma once

#include "platform/menus/MenuModel.h"

#include <QShortcut>
#include <QWindow>

#include <memory>
#include <vector>

namespace tarnwick {

/// The key equivalents of menus. Those without a modifier hold in the main window alone, and can be
/// switched off where the keys mean something else; the others hold in every window of the program, except
/// for what acts on the main window.
class MenuShortcuts : public QObject {
    Q_OBJECT

public:
    /// `model` and `window` must outlive this object.
    MenuShortcuts(menus::MenuModel& model, QWindow& window);

    /// Whether the equivalents without a modifier hold.
    void setPlainKeysEnabled(bool enabled);

private:
    void rebuild();
    void add(int number);

    menus::MenuModel& m_model;
    QWindow& m_window;
    bool m_plainKeysEnabled = true;
    std::vector<std::unique_ptr<QShortcut>> m_shortcuts;
};

} // namespace tarnwick
