#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QRectF>
#include <QSize>

#include <functional>

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

    /// Whether the desktop's title bar and border are left away. The window is then moved by its own
    /// background and resized at its own edges.
    virtual void setTitleBarHidden(bool hidden) = 0;

    /// Width and height stay in this proportion when the user resizes the window.
    virtual void setContentAspectRatio(QSize ratio) = 0;

    /// Puts the window there, as far as the desktop lets it: a frame that lies on no screen any more, or
    /// is larger than the screen, is brought onto one. In full screen the window keeps the screen's.
    virtual void setFrame(const QRectF& frame) = 0;

    /// `shouldClose` is asked when the user closes the window; empty means yes.
    virtual void setShouldClose(std::function<bool()> shouldClose) = 0;

    /// Shows the window above all others and gives it the keyboard.
    virtual void orderFront() = 0;

    /// Takes the window off the screen. It keeps its state.
    virtual void orderOut() = 0;
    virtual void miniaturize() = 0;

    /// Closes the window without asking.
    virtual void close() = 0;

    virtual Level level() const = 0;
    virtual bool isFullScreen() const = 0;
    virtual bool isVisible() const = 0;

    /// Neither maximised nor in full screen.
    virtual bool isWindowed() const { return !isFullScreen(); }

    /// Neither off the screen nor minimised; where the desktop does not tell, true.
    virtual bool canBeSeen() const = 0;

    /// In screen points, from the lower left corner of the first screen to that of the window; y grows
    /// upwards. Where the desktop does not tell places, as if in the middle of its screen.
    virtual QRectF frame() const = 0;

    /// The frame that it has as an ordinary window: when it is maximised or in full screen, the one before.
    virtual QRectF windowedFrame() const { return frame(); }

Q_SIGNALS:
    void didMove();
    /// Also sent when the window has been maximised, filled the screen, or stopped to.
    void didResize();
    void willClose();
    void canBeSeenChanged();
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
