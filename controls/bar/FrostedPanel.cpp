#include "controls/bar/FrostedPanel.h"

#include "canvas/RenderQueue.h"
#include "controls/bar/Frost.h"

#include <QPointer>

namespace tarnwick {

namespace {

constexpr int fadeTime = 250; // ms

} // namespace

FrostedPanel::FrostedPanel(QQuickItem* parent) : PictureItem(parent), m_before(new PictureItem(this)) {
    const auto renew = [this] {
        m_isOld = true;
        polish();
    };
    connect(this, &PictureItem::deviceSizeChanged, this, renew);
    connect(this, &FrostedPanel::changed, this, renew);
    connect(this, &FrostedPanel::isWantedChanged, this, [this] { polish(); });
    m_fade.setDuration(fadeTime);
    m_fade.setStartValue(1.0);
    m_fade.setEndValue(0.0);
    connect(&m_fade, &QVariantAnimation::valueChanged, m_before,
            [this](const QVariant& opacity) { m_before->setOpacity(opacity.toDouble()); });
    connect(&m_fade, &QVariantAnimation::finished, this, [this] {
        m_before->setPicture(nullptr);
        polish();
    });
}

/// The one that was shown lies over the new one and goes, so that what lies behind changes without a jump.
void FrostedPanel::take(const Picture& made) {
    if (m_isWanted && picture() && made && picture()->size() == made->size()) {
        m_before->setPicture(picture());
        m_before->setSize(size());
        m_before->setOpacity(1);
        m_fade.start();
    }
    setPicture(made);
}

/// Once a frame at most, and one at a time: what changes meanwhile is made afterwards.
void FrostedPanel::updatePolish() {
    if (picture() && picture()->size() != deviceSize())
        m_fade.stop();
    if (m_fade.state() == QAbstractAnimation::Running)
        return;
    m_before->setPicture(nullptr);
    if (!m_isOld || !m_isWanted || m_isMaking || deviceSize().isEmpty() || m_place.isEmpty())
        return;
    m_isOld = false;
    m_isMaking = true;
    renderqueue::run(
        [backdrop = m_backdrop, place = m_place, radius = m_radius, size = deviceSize()] {
            return std::make_shared<const QImage>(frostedPanel(backdrop, place, radius, size));
        },
        [self = QPointer(this)](const Picture& picture) {
            if (!self)
                return;
            self->m_isMaking = false;
            self->take(picture);
            self->polish();
        });
}

} // namespace tarnwick
