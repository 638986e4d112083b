#pragma once

#include <QObject>

namespace tarnwick::windows {

/// Lets the keys of a remote control, and those of the number pad, mean what the keyboard's mean: Back is
/// Escape; OK, Select and Enter are Return; in every window.
class RemoteKeys : public QObject {
    Q_OBJECT

public:
    /// Watches the whole application, which must outlive it.
    RemoteKeys();
    ~RemoteKeys() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tarnwick::windows
