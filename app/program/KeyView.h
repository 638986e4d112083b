#pragma once

#include <QQuickItem>

namespace tarnwick {

/// Catches the key presses that nothing inside it has taken. It has the keyboard focus from the start, and
/// takes it back whenever a popup, a chooser or the like has left it with nobody.
class KeyView : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(KeyEventHandler)

public:
    explicit KeyView(QQuickItem* parent = nullptr);
    ~KeyView() override;

    /// Whether the keys belong to this view or to something in it, and not to a popup.
    bool hasKeys() const;

Q_SIGNALS:
    /// A key was pressed; its hardware code. Modifiers are not looked at.
    void keyDown(int keyCode);

    /// The same press, as the keyboard means it.
    void pressed(QKeyCombination keys);

    /// What the keys do is asked for.
    void helpWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void takeBack();

    QMetaObject::Connection m_following; ///< of the window's focus
};

} // namespace tarnwick
