#include "visuals/RotatingCDNSView.h"

#include "canvas/RenderQueue.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

namespace tarnwick {

namespace {

// Thirty pictures a second are smooth for a turning disc and half the work of sixty.
constexpr std::chrono::milliseconds tickByProcessor{33};

dispatch::Instant systemNow() { return std::chrono::steady_clock::now().time_since_epoch(); }

} // namespace

QSGNode* CDLayer::updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) {
    if (const auto* context = QOpenGLContext::currentContext()) {
        const auto* renderer = reinterpret_cast<const char*>(context->functions()->glGetString(GL_RENDERER));
        const QByteArray name = QByteArray(renderer).toLower();
        m_drawnByProcessor =
            name.contains("llvmpipe") || name.contains("softpipe") || name.contains("swrast");
    }
    return PictureItem::updatePaintNode(old, data);
}

RotatingCDNSView::RotatingCDNSView(QQuickItem* parent) : QQuickItem(parent), m_cdLayer(new CDLayer(this)) {
    m_cdLayer->setTransformOrigin(Center);
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.setInterval(tickByProcessor);
    connect(&m_tick, &QTimer::timeout, this, &RotatingCDNSView::showAngle);
    connect(m_cdLayer, &PictureItem::deviceSizeChanged, this, &RotatingCDNSView::follow);
    if (window()) // with a parent in a window the base class was told before this class was there
        window()->installEventFilter(this);
}

void RotatingCDNSView::setClock(animation::Clock* clock) {
    if (m_clock == clock)
        return;
    // The angle stays; only the time that it is counted from is another.
    const bool turning = isRotating();
    m_rotation.stop(now());
    if (m_clock)
        disconnect(m_clock, nullptr, this, nullptr);
    m_clock = clock;
    if (clock)
        connect(clock, &animation::Clock::moved, this, &RotatingCDNSView::showAngle);
    if (turning)
        m_rotation.start(now());
}

void RotatingCDNSView::updateImage(const DiscImage& image, double side) {
    m_currentImage = image;
    m_currentSize = side;
    layOut();
    follow();
}

void RotatingCDNSView::startRotation() {
    m_rotation.start(now());
    pace();
}

void RotatingCDNSView::stopRotation() {
    m_rotation.stop(now());
    showAngle();
    pace();
}

double RotatingCDNSView::angle() const { return m_rotation.angle(now()); }

void RotatingCDNSView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        layOut();
}

void RotatingCDNSView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        if (data.window)
            data.window->installEventFilter(this);
        pace();
    } else if (change == ItemVisibleHasChanged) {
        pace();
    }
}

bool RotatingCDNSView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window() && (event->type() == QEvent::Expose || event->type() == QEvent::Hide))
        QMetaObject::invokeMethod(
            this, [this] { pace(); }, Qt::QueuedConnection);
    return QQuickItem::eventFilter(watched, event);
}

dispatch::Instant RotatingCDNSView::now() const { return m_clock ? m_clock->now() : systemNow(); }

void RotatingCDNSView::layOut() {
    const double side = std::min(width(), height());
    m_cdLayer->setSize({side, side});
    m_cdLayer->setPosition({(width() - side) / 2, (height() - side) / 2});
}

// Another picture comes at once, another size when it stands: each drawing decodes the whole disc.
void RotatingCDNSView::follow() {
    if (m_drawnSide == 0 || m_drawnImage != m_currentImage)
        draw();
    else if (m_drawnSide != m_cdLayer->deviceSize().width())
        m_settling.start();
}

void RotatingCDNSView::draw() {
    const int side = m_cdLayer->deviceSize().width();
    if (auto ready = m_currentImage.rendering(side); ready && m_drawnImage != m_currentImage) {
        m_drawnSide = side;
        m_drawnImage = m_currentImage;
        ++m_order;
        m_cdLayer->setPicture(std::move(ready));
        return;
    }
    if (m_drawing || side < DiscImage::smallestSide ||
        (m_drawnSide == side && m_drawnImage == m_currentImage))
        return;
    // One at a time: what was asked for meanwhile follows, and of many only the last.
    m_drawing = true;
    m_drawnSide = side;
    m_drawnImage = m_currentImage;
    const auto broken = std::make_shared<bool>(false);
    const auto make = [image = m_currentImage, side, broken] {
        auto picture = image.render(side);
        *broken = !picture && !image.isNull();
        return *broken ? Catalogue::shared().picture(QStringLiteral("cddefault"), QSize(side, side))
                       : picture;
    };
    renderqueue::run(make, [self = QPointer(this), broken,
                            order = ++m_order](const PictureItem::Picture& picture) {
        if (!self)
            return;
        if (*broken)
            Q_EMIT self->logLine(QStringLiteral("Errore: Immagine non valida. Usando immagine predefinita."));
        if (self->m_order == order) // else overtaken by one that was ready
            self->m_cdLayer->setPicture(picture);
        self->m_drawing = false;
        self->follow();
    });
}

void RotatingCDNSView::showAngle() {
    constexpr double degrees = 180 / M_PI;
    m_cdLayer->setRotation(-angle() * degrees);
    if (m_frames && window())
        window()->update();
    // The renderer is known once a frame has been drawn.
    if (m_tick.isActive() && !m_cdLayer->isDrawnByProcessor())
        pace();
}

void RotatingCDNSView::pace() {
    const bool moving = isRotating() && canBeSeen();
    const bool byFrames = moving && !m_cdLayer->isDrawnByProcessor();
    if (moving && !byFrames)
        m_tick.start();
    else
        m_tick.stop();
    if (byFrames && !m_frames) {
        m_frames = connect(window(), &QQuickWindow::afterAnimating, this, &RotatingCDNSView::showAngle);
        window()->update();
    } else if (!byFrames && m_frames) {
        disconnect(m_frames);
        m_frames = {};
    }
    if (moving)
        showAngle();
}

bool RotatingCDNSView::canBeSeen() const { return isVisible() && window() && window()->isExposed(); }

} // namespace tarnwick
