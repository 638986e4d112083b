#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QObject>

namespace tarnwick::windows {

/// Makes one press one command, however long the key is held: drops the presses by which a held key repeats
/// itself, whichever window they go to. What moves a selection, the focus or the
/// volume goes on repeating, and so does what is typed into a text.
///
/// Qt's own word for a repeat is not enough: an X server repeats a key by releasing and pressing it, and Qt
/// does not always see the two together. They bear the same time, which no finger can do.
class HeldKeys : public QObject {
    Q_OBJECT

public:
    /// Watches the whole application, which must outlive it.
    HeldKeys();
    ~HeldKeys() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isRepeat(const QKeyEvent& press) const;

    QHash<quint32, quint64> m_releases; ///< when each key was released last, ms; by its code
};

} // namespace tarnwick::windows
