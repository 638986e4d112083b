#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QRectF>
#include <QtQmlIntegration/qqmlintegration.h>

#include <functional>
#include <memory>
#include <optional>

class QImage;

namespace tarnwick {

/// What lies behind a frosted panel, in the panel's window. Pictures are made where the frost is.
struct Backdrop {
    Q_GADGET
    QML_VALUE_TYPE(backdrop)

public:
    /// Makes a picture of about `side` pixels; called off the main thread. May return null.
    using Picture = std::function<std::shared_ptr<const QImage>(int side)>;

    QSizeF window;                ///< in the units of all that follows
    QList<QColor> gradientColors; ///< top to bottom, opaque or over `base`
    QColor base = Qt::black;      ///< under clear parts of the gradient
    Picture logo;                 ///< over all of the window; none: the gradient is seen
    Picture cover;                ///< none: no cover
    QRectF coverRect;
    double coverRadius = 0;
    Picture record; ///< none: no record, or it is away
    QPointF recordCentre;
    double recordDiameter = 0;
    Picture cassette; ///< in place of the record; none for most albums
    QRectF cassetteRect;
    QRectF listRect; ///< of the list in place of the cover; empty when it is not there
    QColor listColor;
    quint64 serial = 0; ///< differs when any picture differs

    bool operator==(const Backdrop& other) const {
        return window == other.window && gradientColors == other.gradientColors && base == other.base &&
               coverRect == other.coverRect && coverRadius == other.coverRadius &&
               recordCentre == other.recordCentre && recordDiameter == other.recordDiameter &&
               cassetteRect == other.cassetteRect && listRect == other.listRect &&
               listColor == other.listColor && serial == other.serial;
    }
};

} // namespace tarnwick
