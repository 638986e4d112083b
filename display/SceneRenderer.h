#pragma once

#include <QImage>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>

#include <memory>

namespace tarnwick {

/// Renders a scene into a picture, without a screen.
///
/// Needs Qt Quick's software renderer, chosen before the application object is made (`useSoftware`).
class SceneRenderer {
public:
    /// Must be called before the application object is made.
    static void useSoftware();

    /// `root` is shown at `size` device pixels.
    SceneRenderer(std::unique_ptr<QQuickItem> root, QSize size);
    ~SceneRenderer();

    /// Lets the items find their places, as each frame on a screen does first.
    void layOut() { m_control.polishItems(); }

    /// The scene as it is now.
    QImage render();

    /// Gives the window and the root another size.
    void resize(QSize size);

    /// How often the scene asked to be drawn anew.
    int drawRequests() const { return m_drawRequests; }

    QQuickItem& root() { return *m_root; }
    QQuickWindow& window() { return *m_window; }

private:
    QImage m_picture; // the window's last frame refers to it
    QQuickRenderControl m_control;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_root;
    int m_drawRequests = 0;
};

} // namespace tarnwick
