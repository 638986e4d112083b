#pragma once

#include <QPointF>
#include <QQuickWindow>

#include <optional>

namespace tarnwick {

/// Lets a window be moved by its background: by anything in it that does not want the drag itself. Such a
/// press is no click any more, whether the window can go or fills the screen.
class WindowDrag : public QObject {
    Q_OBJECT

public:
    /// How far the pointer goes before it drags, in pixels along either axis: more than sliders and lists
    /// need to begin, and than a tap may go.
    static int threshold();

    /// `window` must outlive this object.
    explicit WindowDrag(QQuickWindow& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isEcho(const QMouseEvent& press) const;
    bool isWanted(QMouseEvent& move) const;
    void start(QMouseEvent& move);

    QQuickWindow& m_window;
    std::optional<QPointF> m_pressedAt; ///< none when this press cannot become a drag any more
    Qt::MouseButton m_releasedButton = Qt::NoButton;
    quint64 m_releasedAt = 0; ///< the event's own time, ms
};

} // namespace tarnwick
