#pragma once

#include <QQuickItem>

namespace tarnwick {

/// Catches the keys of the display and hands on their hardware codes. Other keys pass.
class KeyEventHandler : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    using QQuickItem::QQuickItem;

Q_SIGNALS:
    void keyDown(int keyCode);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace tarnwick
