#include "controls/bar/FrostedPanel.h"

#include "assets/RenderQueue.h"
#include "controls/bar/Frost.h"

#include <QPointer>

namespace tarnwick {

FrostedPanel::FrostedPanel(QQuickItem* parent) : PictureItem(parent) {
    const auto renew = [this] {
        m_isOld = true;
        polish();
    };
    connect(this, &PictureItem::deviceSizeChanged, this, renew);
    connect(this, &FrostedPanel::changed, this, renew);
    connect(this, &FrostedPanel::isWantedChanged, this, [this] { polish(); });
}

/// Once a frame at most, and one at a time: what changes meanwhile is made afterwards.
void FrostedPanel::updatePolish() {
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
            self->setPicture(picture);
            self->polish();
        });
}

} // namespace tarnwick
