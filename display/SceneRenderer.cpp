#include "display/SceneRenderer.h"

#include <QQuickRenderTarget>

namespace tarnwick {

void SceneRenderer::useSoftware() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

SceneRenderer::SceneRenderer(std::unique_ptr<QQuickItem> root, QSize size)
    : m_window(std::make_unique<QQuickWindow>(&m_control)), m_root(std::move(root)) {
    const auto count = [this] { ++m_drawRequests; };
    QObject::connect(&m_control, &QQuickRenderControl::renderRequested, m_window.get(), count);
    QObject::connect(&m_control, &QQuickRenderControl::sceneChanged, m_window.get(), count);
    m_root->setParentItem(m_window->contentItem());
    resize(size);
}

SceneRenderer::~SceneRenderer() {
    m_root.reset();
    m_window.reset();
}

void SceneRenderer::resize(QSize size) {
    if (m_picture.size() == size)
        return; // a new picture would be painted only where the scene changes
    m_picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    m_picture.fill(Qt::black);
    m_window->contentItem()->setSize(size);
    m_window->resize(size);
    m_root->setSize(size);
    m_window->setRenderTarget(QQuickRenderTarget::fromPaintDevice(&m_picture));
}

QImage SceneRenderer::render() {
    layOut();
    m_control.beginFrame();
    m_control.sync();
    m_control.render();
    m_control.endFrame();
    return m_picture.copy();
}

} // namespace tarnwick
