#pragma once

#include "platform/windows/Windows.h"

#include <memory>
#include <vector>

namespace tarnwick::windows {

class FakeWindow : public Window {
public:
    void setLevel(Level level) override { m_level = level; }
    void toggleFullScreen() override { m_isFullScreen = !m_isFullScreen; }
    Level level() const override { return m_level; }
    bool isFullScreen() const override { return m_isFullScreen; }

private:
    Level m_level = Level::Normal;
    bool m_isFullScreen = false;
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
