#pragma once

#include "platform/dispatch/Dispatcher.h"
#include "platform/windows/Windows.h"

#include <QWindow>

#include <memory>
#include <vector>

namespace tarnwick::windows {

class QtWindow;

/// The windows of the running program. What the desktop's protocol forbids is quietly left out: under
/// Wayland a window neither places itself nor keeps above others.
class QtWindowSystem : public WindowSystem {
    Q_OBJECT

public:
    /// How long a window must have kept its size before its proportion is put right, where the desktop
    /// does not keep it itself.
    static constexpr dispatch::Duration settlingTime = std::chrono::milliseconds(200);

    /// `dispatcher` must outlive the system and its windows.
    explicit QtWindowSystem(dispatch::Dispatcher& dispatcher);
    ~QtWindowSystem() override;

    /// Makes `window` one of the application's, until it is destroyed. The first one is the main window.
    Window& add(QWindow& window);

    void setApplicationIcon(const QImage& icon) override;
    QList<Window*> windows() const override;
    Window* mainWindow() const override { return firstWindow(); }

    const QImage& applicationIcon() const { return m_icon; }

Q_SIGNALS:
    void applicationIconChanged();

private:
    dispatch::Dispatcher& m_dispatcher;
    std::vector<std::unique_ptr<QtWindow>> m_windows;
    QImage m_icon;
};

} // namespace tarnwick::windows
