#pragma once

#include <QPointF>
#include <QQuickWindow>

#include <optional>

namespace tarnwick {

/// Lets a window be moved by its background: by anything in it that does not want the drag itself.
class WindowDrag : public QObject {
    Q_OBJECT

public:
    /// How far the pointer goes before it drags, in pixels; more than sliders and lists need to begin.
    static constexpr int threshold = 16;

    /// `window` must outlive this object or end it.
    explicit WindowDrag(QQuickWindow& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isEcho(const QMouseEvent& press) const;
    bool isFree(QMouseEvent& move) const;
    void start();

    QQuickWindow& m_window;
    std::optional<QPointF> m_pressedAt; ///< none when this press cannot become a drag any more
    quint64 m_releasedAt = 0;           ///< the event's own time, ms
};

} // namespace tarnwick
