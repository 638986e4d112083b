#include "display/CutPictureItem.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

CutPictureItem::CutPictureItem(QQuickItem* parent) : QQuickItem(parent), m_layer(new PictureItem(this)) {}

CutPictureItem::~CutPictureItem() { m_settling.cancel(); }

void CutPictureItem::setPicture(const Picture& picture) {
    if (m_picture == picture)
        return;
    m_picture = picture;
    Q_EMIT pictureChanged();
    remake();
    Q_EMIT readyChanged();
}

void CutPictureItem::setWorkshop(PictureWorkshop* workshop) {
    if (m_workshop == workshop)
        return;
    m_workshop = workshop;
    Q_EMIT workshopChanged();
    remake();
}

void CutPictureItem::componentComplete() {
    QQuickItem::componentComplete();
    remake();
}

void CutPictureItem::geometryChange(const QRectF& to, const QRectF& from) {
    QQuickItem::geometryChange(to, from);
    if (to.size() == from.size())
        return;
    layOut();
    if (!m_layer->picture())
        remake();
    else
        remakeSoon();
}

PictureCut CutPictureItem::wantedCut() const {
    const double ratio = m_pixelRatio;
    const QSize size(static_cast<int>(std::lround(width() * ratio)),
                     static_cast<int>(std::lround(height() * ratio)));
    const double radius = m_isRound ? std::max(size.width(), size.height()) : m_cornerRadius * ratio;
    return {size, radius, m_shadowOpacity, m_shadowRadius * ratio, QPointF(0, m_shadowOffset * ratio)};
}

void CutPictureItem::remakeSoon() {
    m_settling.cancel();
    if (!m_workshop)
        return;
    m_settling = m_workshop->later(settleTime, [item = QPointer(this)] {
        if (item)
            item->remake();
    });
}

void CutPictureItem::remake() {
    if (!isComponentComplete() || !m_workshop)
        return;
    if (!m_picture.isPresent()) {
        m_asked = {};
        ++m_order;
        show({}, {}, {});
        return;
    }
    const PictureCut cut = wantedCut();
    if (cut.size.isEmpty() || (m_asked == m_picture && m_askedCut == cut))
        return;
    m_asked = m_picture;
    m_askedCut = cut;
    m_settling.cancel();
    m_workshop->make(
        [picture = m_picture, cut, &catalogue = m_workshop->catalogue()] {
            return PictureWorkshop::cut(PictureWorkshop::fitted(catalogue, picture, cut.size), cut);
        },
        [item = QPointer(this), picture = m_picture, cut, order = ++m_order](const QImage& drawn) {
            if (item && item->m_order == order) // else overtaken
                item->show(drawn, picture, cut);
        });
}

void CutPictureItem::show(const QImage& drawn, const Picture& picture, const PictureCut& cut) {
    m_shown = picture;
    m_shownCut = cut;
    m_layer->setPicture(drawn.isNull() ? nullptr : std::make_shared<const QImage>(drawn));
    layOut();
    Q_EMIT readyChanged();
}

void CutPictureItem::layOut() {
    if (m_shownCut.size.isEmpty())
        return;
    // The margin in units of the item, which may have another size than the picture was made for.
    const double marginX = m_shownCut.margin() * width() / m_shownCut.size.width();
    const double marginY = m_shownCut.margin() * height() / m_shownCut.size.height();
    m_layer->setPosition({-marginX, -marginY});
    m_layer->setSize({width() + 2 * marginX, height() + 2 * marginY});
}

} // namespace tarnwick
