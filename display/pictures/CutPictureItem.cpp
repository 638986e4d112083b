#include "display/pictures/CutPictureItem.h"

#include "canvas/RenderQueue.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

CutPictureItem::CutPictureItem(QQuickItem* parent)
    : QQuickItem(parent), m_before(new PictureItem(this)), m_layer(new PictureItem(this)) {}

void CutPictureItem::setPicture(const Picture& picture) {
    if (m_picture == picture)
        return;
    m_picture = picture;
    Q_EMIT pictureChanged();
    polish();
}

void CutPictureItem::componentComplete() {
    QQuickItem::componentComplete();
    polish();
}

void CutPictureItem::geometryChange(const QRectF& to, const QRectF& from) {
    QQuickItem::geometryChange(to, from);
    polish();
    if (to.size() != from.size())
        m_settling.start();
}

// A new picture often comes with another size, so what to make is seen once both are known.
void CutPictureItem::updatePolish() {
    layOut();
    if (m_asked != m_picture || !m_layer->picture())
        remake();
}

PictureCut CutPictureItem::cutFor(QSizeF size) const {
    const double ratio = m_pixelRatio;
    const QSize device(static_cast<int>(std::lround(size.width() * ratio)),
                       static_cast<int>(std::lround(size.height() * ratio)));
    const double radius = m_isRound ? std::max(device.width(), device.height()) : m_cornerRadius * ratio;
    return {device, radius, m_shadowOpacity, m_shadowRadius * ratio, QPointF(0, m_shadowOffset * ratio)};
}

void CutPictureItem::remake() {
    if (!isComponentComplete())
        return;
    if (!m_picture.isPresent()) {
        m_asked = {};
        ++m_order;
        show({}, {}, {});
        return;
    }
    const PictureCut cut = cutFor(size());
    if (cut.size.isEmpty() || (m_asked == m_picture && m_askedCut == cut))
        return;
    m_asked = m_picture;
    m_askedCut = cut;
    m_settling.stop();
    if (const auto prepared = m_picture.prepared.lock(); prepared && prepared->cut == cut) {
        ++m_order;
        show(prepared->image, m_picture, cut);
        return;
    }
    renderqueue::run(
        [picture = m_picture, cut] {
            return std::make_shared<const QImage>(
                cutOut(fitted(Catalogue::shared(), picture, cut.size), cut));
        },
        [item = QPointer(this), picture = m_picture, cut,
         order = ++m_order](const renderqueue::Picture& drawn) {
            if (item && item->m_order == order) // else overtaken
                item->show(drawn, picture, cut);
        });
}

void CutPictureItem::show(std::shared_ptr<const QImage> drawn, const Picture& picture,
                          const PictureCut& cut) {
    if (drawn && drawn->isNull())
        drawn.reset();
    if (picture != m_shown && drawn && m_layer->picture())
        keepBefore();
    m_shown = picture;
    m_shownCut = cut;
    m_layer->setPicture(std::move(drawn));
    layOut();
    Q_EMIT shown();
}

void CutPictureItem::keepBefore() {
    Q_EMIT replaced();
    if (fade() >= 1)
        return;
    m_before->setPicture(m_layer->picture());
    m_before->setPosition(m_layer->position());
    m_before->setSize(m_layer->size());
}

void CutPictureItem::setFade(double fade) {
    if (fade == m_layer->opacity())
        return;
    m_layer->setOpacity(fade);
    if (fade >= 1)
        m_before->setPicture(nullptr);
    Q_EMIT fadeChanged();
}

void CutPictureItem::layOut() {
    if (m_shownCut.size.isEmpty())
        return;
    if (m_shown != m_picture) { // the one before stays where it was, whatever the new one needs
        m_layer->setPosition(m_layer->position() + std::exchange(m_laidOutAt, position()) - position());
        return;
    }
    m_laidOutAt = position();
    // The margin in units of the item, which may have another size than the picture was made for.
    const double marginX = m_shownCut.margin() * width() / m_shownCut.size.width();
    const double marginY = m_shownCut.margin() * height() / m_shownCut.size.height();
    m_layer->setPosition({-marginX, -marginY});
    m_layer->setSize({width() + 2 * marginX, height() + 2 * marginY});
}

} // namespace tarnwick
