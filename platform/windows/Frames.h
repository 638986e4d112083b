#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace tarnwick::windows {

/// A rectangle in Qt's coordinates, y downwards, as a frame whose origin is its lower left corner, y
/// upwards from the lower edge of `firstScreen`.
QRectF frameFromRectangle(const QRect& rectangle, const QRect& firstScreen);

/// The other way round; to whole pixels.
QRect rectangleFromFrame(const QRectF& frame, const QRect& firstScreen);

/// `rectangle` if it can be seen and taken hold of on one of `screens`; else `whollyOnScreen`.
QRect broughtOntoScreen(const QRect& rectangle, const QList<QRect>& screens);

/// `rectangle` moved onto the nearest of `screens`. One that is larger than its screen is made smaller, its
/// proportion kept.
QRect whollyOnScreen(const QRect& rectangle, const QList<QRect>& screens);

/// `size`, or the largest one of its proportion that fits into `bounds`, in the middle of them.
QRect centred(QSize size, const QRect& bounds);

/// What `size` becomes in proportion `ratio`: the side that has changed more since `previous` stays,
/// unless the other would outgrow `bounds`.
QSize inProportion(QSize size, QSize previous, QSize ratio, QSize bounds);

} // namespace tarnwick::windows
