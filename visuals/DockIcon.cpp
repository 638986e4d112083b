#include "visuals/DockIcon.h"

#include <QPainter>

namespace tarnwick {

QImage roundedIcon(const QImage& picture, double cornerRadius) {
    constexpr QSize size(DockIcon::side, DockIcon::side);
    QImage icon(size, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                         .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.drawRoundedRect(icon.rect(), cornerRadius, cornerRadius);
    return icon;
}

DockIcon::DockIcon(dispatch::Dispatcher& dispatcher, const Catalogue& catalogue,
                   std::function<void(const QImage&)> show)
    : m_dispatcher(dispatcher), m_catalogue(catalogue),
      m_show(std::make_shared<std::function<void(const QImage&)>>(std::move(show))) {}

void DockIcon::applyDockIcon(const std::optional<images::Image>& cover, bool enabled) {
    const auto make = [cover = enabled ? cover : std::nullopt, &catalogue = m_catalogue] {
        if (cover) {
            const QImage pixels = cover->pixels();
            return pixels.isNull() ? QImage() : roundedIcon(pixels, cornerRadius);
        }
        const auto own = catalogue.picture(QStringLiteral("AppIcon"), {2 * side, 2 * side});
        return own ? *own : QImage();
    };
    const int request = ++*m_request;
    m_dispatcher.globalQueue(dispatch::QualityOfService::Background)
        .async([make, request, current = std::weak_ptr(m_request), show = std::weak_ptr(m_show),
                &main = m_dispatcher.mainQueue()] {
            main.async([icon = make(), request, current, show] {
                const auto newest = current.lock();
                if (newest && *newest == request && !icon.isNull())
                    (*show.lock())(icon);
            });
        });
}

} // namespace tarnwick
