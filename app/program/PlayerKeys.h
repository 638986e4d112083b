#pragma once

#include "display/state/TarnwickView.h"
#include "music/MusicSource.h"

#include <QKeyCombination>
#include <QObject>

namespace tarnwick {

/// What keys ask of the player, beside the menus' own: those of the main window, and the media keys of a
/// keyboard or a remote control in every window.
class PlayerKeys : public QObject {
    Q_OBJECT

public:
    /// Watches the whole application, which must outlive it, as must both.
    PlayerKeys(MusicSource& source, TarnwickView& view);
    ~PlayerKeys() override;

    /// Does what a key of the main window is for, if anything.
    void press(QKeyCombination keys);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool pressMediaKey(int key);
    void playPause();

    MusicSource& m_source;
    TarnwickView& m_view;
};

} // namespace tarnwick
