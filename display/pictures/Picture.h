#pragma once

#include "assets/Catalogue.h"
#include "display/pictures/PictureCut.h"
#include "platform/images/Image.h"
#include "visuals/DiscImage.h"

#include <QImage>
#include <QObject>
#include <QRectF>
#include <QtQmlIntegration/qqmlintegration.h>

#include <memory>
#include <optional>

namespace tarnwick {

/// A picture that has been cut out.
struct PreparedPicture {
    PictureCut cut;
    std::shared_ptr<const QImage> image; ///< null when there turned out to be no picture
};

/// A cover, a disc, or none, as QML hands it on.
struct Picture {
    Q_GADGET
    QML_VALUE_TYPE(picture)
    Q_PROPERTY(bool isPresent READ isPresent)
    /// Width by height; 1 when there is none.
    Q_PROPERTY(double aspectRatio READ aspectRatio)
    Q_PROPERTY(tarnwick::DiscImage disc MEMBER disc)

public:
    Picture() = default;
    Picture(std::optional<images::Image> image_) : image(std::move(image_)) {} // NOLINT: the same thing
    explicit Picture(DiscImage disc_) : disc(std::move(disc_)) {}

    bool isPresent() const { return image.has_value() || !disc.isNull(); }
    double aspectRatio() const {
        const QSize size = image ? image->size() : QSize();
        return size.isEmpty() ? 1.0 : double(size.width()) / size.height();
    }

    /// Where the picture stands in `area` (points from its corner): as large as it fits, at the left edge, in
    /// the middle of the height, on whole device pixels.
    Q_INVOKABLE QRectF placeIn(const QSizeF& area, double pixelRatio) const;

    /// Whatever has been prepared of it, it is the same picture.
    friend bool operator==(const Picture& a, const Picture& b) {
        return a.image == b.image && a.disc == b.disc;
    }

    std::optional<images::Image> image;
    DiscImage disc; ///< null when there is an image
    /// Empty when nothing has been, or is kept any more. The script engine holds on to values like this one
    /// for as long as it likes, so it is somebody else who keeps what has been prepared.
    std::weak_ptr<const PreparedPicture> prepared;
};

/// The picture at exactly `size` device pixels, premultiplied; the catalogue's are drawn in that size.
/// Null when it is none or broken. Any thread, but not the main one: it may take long.
QImage fitted(const Catalogue& catalogue, const Picture& picture, QSize size);

} // namespace tarnwick
