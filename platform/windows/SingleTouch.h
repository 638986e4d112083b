#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QPointingDevice>
#include <QWindow>

class QTouchEvent;

namespace tarnwick::windows {

/// Makes one finger one touch: as soon as a second point comes down, as of a palm, all of them are taken
/// back, and nothing is meant until the screen is free again. A finger that stays where it is for long calls
/// for a menu, and is taken back as well.
class SingleTouch : public QObject {
    Q_OBJECT

public:
    /// Watches the whole application, which must outlive it, as must `dispatcher`.
    explicit SingleTouch(dispatch::Dispatcher& dispatcher);
    ~SingleTouch() override;

    /// How long a finger stays where it is for a menu: the desktop's own time for it.
    static dispatch::Duration holdTime();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// A finger has stayed at `place` of `window`.
    void held(QWindow* window, const QPointF& place);

private:
    bool take(QWindow& window, const QTouchEvent& touch);
    void awaitHold(QWindow& window, const QTouchEvent& touch);
    void hold();
    void drop();

    dispatch::Dispatcher& m_dispatcher;
    QPointer<QWindow> m_window; ///< that is touched; none when none is
    QPointer<const QPointingDevice> m_device;
    QPointer<QObject> m_grabber; ///< what has the touch for itself
    QMetaObject::Connection m_grabs;
    QPointF m_place; ///< where the finger came down
    dispatch::WorkItem m_hold;
    bool m_isDropped = false;
};

} // namespace tarnwick::windows
