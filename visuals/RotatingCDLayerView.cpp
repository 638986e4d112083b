#include "visuals/RotatingCDLayerView.h"

namespace tarnwick {

RotatingCDLayerView::RotatingCDLayerView(QQuickItem* parent)
    : QQuickItem(parent), m_view(new RotatingCDNSView(this)) {
    connect(m_view, &RotatingCDNSView::logLine, this, &RotatingCDLayerView::logLine);
}

void RotatingCDLayerView::setNsImage(const DiscImage& image) {
    if (m_nsImage == image)
        return;
    m_nsImage = image;
    apply();
}

void RotatingCDLayerView::setSide(double side) {
    if (m_side == side)
        return;
    m_side = side;
    setSize({side, side});
    apply();
}

void RotatingCDLayerView::setIsPlaying(bool playing) {
    if (m_isPlaying == playing)
        return;
    m_isPlaying = playing;
    apply();
}

void RotatingCDLayerView::setRotateCDDuringPlayback(bool rotate) {
    if (m_rotateCDDuringPlayback == rotate)
        return;
    m_rotateCDDuringPlayback = rotate;
    apply();
}

void RotatingCDLayerView::setClock(animation::Clock* clock) {
    if (m_clock == clock)
        return;
    m_clock = clock;
    m_view->setClock(clock);
    Q_EMIT changed();
}

void RotatingCDLayerView::componentComplete() {
    QQuickItem::componentComplete();
    apply();
}

void RotatingCDLayerView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    m_view->setSize(now.size());
}

void RotatingCDLayerView::apply() {
    if (isComponentComplete()) {
        m_view->updateImage(m_nsImage, m_side);
        if (m_isPlaying && m_rotateCDDuringPlayback)
            m_view->startRotation();
        else
            m_view->stopRotation();
    }
    Q_EMIT changed();
}

} // namespace tarnwick
