#include "controls/picker/PopoverFrame.h"

#include "canvas/RenderQueue.h"

#include <QPointer>
#include <QQuickWindow>

namespace tarnwick {

PopoverFrame::PopoverFrame(QQuickItem* parent) : PictureItem(parent) {
    const auto renew = [this] {
        m_isOld = true;
        polish();
    };
    connect(this, &PictureItem::deviceSizeChanged, this, renew);
    connect(this, &PopoverFrame::lookChanged, this, renew);
}

/// Once a frame at most, and one at a time: what changes meanwhile is made afterwards.
void PopoverFrame::updatePolish() {
    if (!m_isOld || m_isMaking || deviceSize().isEmpty() || !window())
        return;
    m_isOld = false;
    m_isMaking = true;
    renderqueue::run(
        [look = PopoverLook{m_option, m_gradientColors, m_textColor, m_hasArrow, m_isPassePartout},
         size = size() / m_point - QSizeF(2 * popoverMargin, 2 * popoverMargin),
         unit = m_point * window()->effectiveDevicePixelRatio()] {
            return std::make_shared<const QImage>(paintPopover(look, size.width(), size.height(), unit));
        },
        [self = QPointer(this)](const Picture& picture) {
            if (!self)
                return;
            self->m_isMaking = false;
            self->setPicture(picture);
            Q_EMIT self->isThereChanged();
            self->polish();
        });
}

} // namespace tarnwick
