#pragma once

#include "platform/defaults/Defaults.h"
#include "platform/windows/Windows.h"
#include "settings/Settings.h"

#include <functional>
#include <optional>

namespace tarnwick {

/// Answers for the main window when the user closes it.
class MainWindowDelegate {
public:
    /// `canComeBack` tells whether anything could bring a hidden window back.
    explicit MainWindowDelegate(std::function<bool()> canComeBack) : m_canComeBack(std::move(canComeBack)) {}

    /// Takes the window off the screen; it is never closed. Always false.
    bool windowShouldClose(windows::Window& window) const;

private:
    std::function<bool()> m_canComeBack;
};

/// Sets the window of the display up, and keeps its frame over restarts. Main thread only.
class MainWindow : public QObject {
    Q_OBJECT

public:
    /// Everything must outlive this object.
    struct Parts {
        windows::WindowSystem& windows;
        defaults::Defaults& defaults;
        Settings& settings;
        std::function<bool()> canComeBack; ///< see `MainWindowDelegate`
    };

    explicit MainWindow(Parts parts);

    /// Gives the first of the application's windows the frame of the last time, before it is first shown.
    /// Once only: after that the window is the user's.
    void restoreFrame();

    /// Gives the first of the application's windows its behaviour, its frame if it has not got it, and its
    /// place in front, and closes all others. Does nothing when there is none.
    void setUp();

    /// What the close button does.
    void askToClose(windows::Window& window) { m_delegate.windowShouldClose(window); }

    /// Shows the window, hidden or not, in front of all others.
    void show();

    /// The program ends: what the next start shall find is the window's ordinary frame, also when it fills
    /// the screen now.
    void leave();

    /// The frame of the last time; none when it was never stored, or one of its numbers is 0.
    std::optional<QRectF> storedFrame() const;

private:
    void followFrame(windows::Window& window);
    void saveFrame();
    void store(QRectF frame, bool isWindowed);

    const Parts m_parts;
    const MainWindowDelegate m_delegate;
    bool m_isFrameRestored = false;
    bool m_isFrameFollowed = false;
    bool m_isFrameStored = false; ///< in this run
};

} // namespace tarnwick
