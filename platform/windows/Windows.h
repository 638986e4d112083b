#pragma once

#include <QImage>
#include <QList>
#include <QObject>

namespace tarnwick::windows {

/// How high a window floats.
enum class Level {
    Normal = 0,
    Floating = 3, ///< above the windows of other applications
};

/// A window of the application. Main thread only.
class Window : public QObject {
    Q_OBJECT

public:
    virtual void setLevel(Level level) = 0;

    /// Enters full screen, or leaves it.
    virtual void toggleFullScreen() = 0;

    virtual Level level() const = 0;
    virtual bool isFullScreen() const = 0;

Q_SIGNALS:
    void didMove();
    void didResize();
    void didBecomeKey();
    void willClose();
};

/// The application with its windows. Main thread only.
class WindowSystem : public QObject {
    Q_OBJECT

public:
    /// Shows `icon` wherever the desktop shows the application's.
    virtual void setApplicationIcon(const QImage& icon) = 0;

    /// In the order in which they were made.
    virtual QList<Window*> windows() const = 0;

    /// The window that the display is in; none before it is there.
    virtual Window* mainWindow() const = 0;

    /// The first of `windows`, or none.
    Window* firstWindow() const {
        const auto all = windows();
        return all.isEmpty() ? nullptr : all.first();
    }

Q_SIGNALS:
    /// Sent within the program to have the icon rebuilt from the cover.
    void updateAppIcon();
};

} // namespace tarnwick::windows
