#pragma once

#include "canvas/PictureItem.h"
#include "canvas/SettleTimer.h"
#include "platform/animation/Clock.h"
#include "platform/animation/Rotation.h"
#include "visuals/DiscImage.h"

#include <QPointer>
#include <QTimer>

#include <atomic>

namespace tarnwick {

/// The disc of the spinning view: tells which renderer draws it.
class CDLayer : public PictureItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    using PictureItem::PictureItem;

    /// Whether frames are drawn by the processor, where each one costs a share of a core.
    bool isDrawnByProcessor() const { return m_drawnByProcessor; }

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    std::atomic<bool> m_drawnByProcessor = true;
};

/// A round picture that fills the smaller side of its view, centred, and turns about its middle. While
/// it turns nothing changes but the transform of its layer; while it stands still no frame is drawn.
class RotatingCDNSView : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    /// The time of one turn.
    static constexpr dispatch::Duration period = std::chrono::milliseconds(1300);

    explicit RotatingCDNSView(QQuickItem* parent = nullptr);

    /// Reads the time from `clock`, which must outlive the view; null is the system's.
    void setClock(animation::Clock* clock);

    /// Shows `image`, drawn off the main thread at the device pixels of `side` points; at once when such a
    /// drawing is at hand. When it turns out to be no picture, the default disc takes its place. While the
    /// view is being resized it is stretched.
    void updateImage(const DiscImage& image, double side);

    /// Turns on from the angle on screen.
    void startRotation();

    /// Stays at the angle on screen.
    void stopRotation();

    bool isRotating() const { return m_rotation.isTurning(); }

    /// The angle at this moment, radians against the clock.
    double angle() const;

    const DiscImage& currentImage() const { return m_currentImage; }
    double currentSize() const { return m_currentSize; }
    CDLayer* cdLayer() const { return m_cdLayer; }

Q_SIGNALS:
    /// Something to tell on standard output.
    void logLine(const QString& line);

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    dispatch::Instant now() const;
    void layOut();
    void follow();
    void draw();
    void showAngle();
    void pace();
    bool canBeSeen() const;

    CDLayer* m_cdLayer;
    animation::Rotation m_rotation{period};
    QPointer<animation::Clock> m_clock;
    QTimer m_tick;
    QMetaObject::Connection m_frames;
    DiscImage m_currentImage;
    double m_currentSize = 0;
    DiscImage m_drawnImage; ///< what is drawn or being drawn
    int m_drawnSide = 0;
    bool m_drawing = false;
    int m_order = 0; ///< of the drawing that was asked for last, or was ready
    SettleTimer m_settling{[this] { draw(); }};
};

} // namespace tarnwick
