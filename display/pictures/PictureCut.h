#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>

namespace tarnwick {

/// How a picture is cut out and what shadow it throws. Lengths in device pixels.
struct PictureCut {
    QSize size;              ///< of the picture itself
    double cornerRadius = 0; ///< at least half the smaller side gives an ellipse
    double shadowOpacity = 0;
    double shadowRadius = 0;
    QPointF shadowOffset;

    /// What the shadow needs around the picture, on every side, and one clear pixel.
    int margin() const;

    friend bool operator==(const PictureCut&, const PictureCut&) = default;
};

/// `picture`, which has the cut's size, cut out and with its shadow. Larger by the margin on every side.
/// Null when `picture` is. Any thread.
QImage cutOut(const QImage& picture, const PictureCut& how);

} // namespace tarnwick
