#include "controls/PopoverFrame.h"

#include <QQuickWindow>

namespace tarnwick {

PopoverFrame::PopoverFrame(QQuickItem* parent) : PictureItem(parent) {
    connect(this, &PictureItem::deviceSizeChanged, this, [this] { polish(); });
    connect(this, &PopoverFrame::lookChanged, this, [this] { polish(); });
}

/// At once: it takes a few milliseconds when the popover opens, and it must be there with its texts.
void PopoverFrame::updatePolish() {
    if (deviceSize().isEmpty() || !window())
        return;
    const double unit = m_point * window()->effectiveDevicePixelRatio();
    const PopoverLook look{m_option, m_gradientColors, m_textColor, m_hasArrow};
    setPicture(std::make_shared<const QImage>(paintPopover(look, width() / m_point - 2 * popoverMargin,
                                                           height() / m_point - 2 * popoverMargin, unit)));
}

} // namespace tarnwick
