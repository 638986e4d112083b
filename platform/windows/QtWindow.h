#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/windows/Windows.h"

#include <QIcon>
#include <QWindow>

namespace tarnwick::windows {

/// A window of Qt's.
class QtWindow : public Window {
    Q_OBJECT

public:
    /// `window` must outlive this object or end it; so must `dispatcher`.
    QtWindow(QWindow& window, dispatch::Dispatcher& dispatcher);
    ~QtWindow() override;

    void setLevel(Level level) override;
    void toggleFullScreen() override;
    void setTitleBarHidden(bool hidden) override;
    void setContentAspectRatio(QSize ratio) override;
    void setFrame(const QRectF& frame) override;
    void setShouldClose(std::function<bool()> shouldClose) override;
    void orderFront() override;
    void orderOut() override;
    void miniaturize() override;
    void close() override;

    Level level() const override { return m_level; }
    bool isFullScreen() const override;
    bool isVisible() const override;
    bool isWindowed() const override;
    bool canBeSeen() const override { return m_canBeSeen; }
    QRectF frame() const override;
    QRectF windowedFrame() const override;

    /// What the desktop shows beside the window's name; null for the application's own, as it is now.
    void setIcon(const QIcon& icon);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool mayClose();
    void place(const QRect& wanted);
    void leaveLostScreen();
    void lookWhetherSeen();
    void hintAtRatio();
    void settleSoon();
    void settle();
    void keepRatio();
    QRect rectangle() const;

    QWindow& m_window;
    dispatch::Dispatcher& m_dispatcher;
    Level m_level = Level::Normal;
    QSize m_ratio;   ///< empty: any
    QRect m_settled; ///< as an ordinary window, when it had last come to rest
    std::function<bool()> m_shouldClose;
    dispatch::WorkItem m_settlingWork;
    dispatch::WorkItem m_screenWork;
    bool m_closing = false;
    bool m_canBeSeen = false;
};

} // namespace tarnwick::windows
