#pragma once

#include "platform/images/Image.h"
#include "visuals/DiscImage.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace tarnwick {

/// A cover, a disc, or none, as QML hands it on.
struct Picture {
    Q_GADGET
    QML_VALUE_TYPE(picture)
    Q_PROPERTY(bool isPresent READ isPresent)
    /// Width by height; 1 when there is none.
    Q_PROPERTY(double aspectRatio READ aspectRatio)

public:
    Picture() = default;
    Picture(std::optional<images::Image> image_) : image(std::move(image_)) {} // NOLINT: the same thing
    explicit Picture(DiscImage disc_) : disc(std::move(disc_)) {}

    bool isPresent() const { return image.has_value() || !disc.isNull(); }
    double aspectRatio() const {
        const QSize size = image ? image->size() : QSize();
        return size.isEmpty() ? 1.0 : double(size.width()) / size.height();
    }

    friend bool operator==(const Picture&, const Picture&) = default;

    std::optional<images::Image> image;
    DiscImage disc; ///< null when there is an image
};

} // namespace tarnwick
