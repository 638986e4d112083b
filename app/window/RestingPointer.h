#pragma once

#include "platform/dispatch/Dispatcher.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QWindow>

namespace tarnwick {

/// Hides the pointer while it rests on a window that fills the screen; its first move shows it again.
class RestingPointer : public QObject {
    Q_OBJECT

public:
    static constexpr dispatch::Duration restTime = std::chrono::seconds(2);

    /// Both must outlive this object.
    RestingPointer(dispatch::Dispatcher& dispatcher, QWindow& window);
    ~RestingPointer() override;

    bool isHidden() const { return m_isHidden; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void isHiddenChanged(bool isHidden);

private:
    void moved();
    void hide();
    void show();

    dispatch::Dispatcher& m_dispatcher;
    QWindow& m_window;
    QPointF m_place;      ///< of the pointer on the desktop
    bool m_isOver = true; ///< as far as was seen
    bool m_isHidden = false;
    dispatch::WorkItem m_rest;
};

} // namespace tarnwick
