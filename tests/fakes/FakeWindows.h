#pragma once

#include "platform/windows/Windows.h"

#include <memory>
#include <utility>
#include <vector>

namespace tarnwick::windows {

class FakeWindow : public Window {
public:
    void setLevel(Level level) override { m_level = level; }
    void toggleFullScreen() override {
        m_isFullScreen = !m_isFullScreen;
        Q_EMIT didResize();
    }
    void setMaximized(bool isMaximized) { m_isMaximized = isMaximized; }
    void setTitleBarHidden(bool hidden) override { m_isTitleBarHidden = hidden; }
    void setContentAspectRatio(QSize ratio) override { m_ratio = ratio; }
    void setFrame(const QRectF& frame) override {
        m_frame = frame;
        if (isWindowed())
            m_windowedFrame = frame;
        Q_EMIT didMove();
        Q_EMIT didResize();
    }
    void setShouldClose(std::function<bool()> shouldClose) override {
        m_shouldClose = std::move(shouldClose);
    }
    void orderFront() override {
        m_isVisible = true;
        m_isMiniaturized = false;
        ++m_timesOrderedFront;
        setCanBeSeen(true);
    }
    void orderOut() override {
        m_isVisible = false;
        setCanBeSeen(false);
    }
    void miniaturize() override {
        m_isMiniaturized = true;
        setCanBeSeen(false);
    }
    void close() override {
        m_isVisible = false;
        m_isClosed = true;
        Q_EMIT willClose();
    }

    Level level() const override { return m_level; }
    bool isFullScreen() const override { return m_isFullScreen; }
    bool isVisible() const override { return m_isVisible; }
    bool isWindowed() const override { return !m_isFullScreen && !m_isMaximized; }
    bool canBeSeen() const override { return m_canBeSeen; }
    QRectF frame() const override { return m_frame; }
    QRectF windowedFrame() const override { return m_windowedFrame; }

    /// The user presses the close button.
    void pressClose() {
        if (!m_shouldClose || m_shouldClose())
            close();
    }

    bool isTitleBarHidden() const { return m_isTitleBarHidden; }
    bool isMiniaturized() const { return m_isMiniaturized; }
    bool isClosed() const { return m_isClosed; }
    QSize contentAspectRatio() const { return m_ratio; }
    int timesOrderedFront() const { return m_timesOrderedFront; }

private:
    void setCanBeSeen(bool canBeSeen) {
        if (std::exchange(m_canBeSeen, canBeSeen) != canBeSeen)
            Q_EMIT canBeSeenChanged();
    }

    Level m_level = Level::Normal;
    bool m_isFullScreen = false;
    bool m_isMaximized = false;
    bool m_isTitleBarHidden = false;
    bool m_isVisible = false;
    bool m_canBeSeen = true;
    bool m_isMiniaturized = false;
    bool m_isClosed = false;
    int m_timesOrderedFront = 0;
    QSize m_ratio;
    QRectF m_frame;
    QRectF m_windowedFrame;
    std::function<bool()> m_shouldClose;
};

/// Windows without a screen; begins with none.
class FakeWindows : public WindowSystem {
public:
    FakeWindow& addWindow() { return *m_windows.emplace_back(std::make_unique<FakeWindow>()); }

    void setApplicationIcon(const QImage& icon) override { m_icon = icon; }

    QList<Window*> windows() const override {
        QList<Window*> all;
        for (const auto& window : m_windows)
            all.append(window.get());
        return all;
    }
    Window* mainWindow() const override { return firstWindow(); }

    const QImage& icon() const { return m_icon; }

private:
    std::vector<std::unique_ptr<FakeWindow>> m_windows;
    QImage m_icon;
};

} // namespace tarnwick::windows
