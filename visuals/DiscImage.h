#pragma once

#include "assets/Catalogue.h"
#include "platform/images/Image.h"

#include <QMetaType>
#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <memory>

namespace tarnwick {

/// Where a cover is printed on a disc, in points of a drawing of `side` by `side`.
struct RecordPrint {
    double side;
    double holeRadius; ///< inside it the disc itself is seen
    double inset;      ///< of the printed circle from the drawing's edge

    friend bool operator==(const RecordPrint&, const RecordPrint&) = default;
};

/// A picture for the record: one of the catalogue, one that lay in the album's folder, or a disc that
/// bears the cover. A description that is drawn at the size it is shown with. Cheap to copy, safe to pass
/// between threads; equal descriptions are equal.
class DiscImage {
    Q_GADGET
    QML_VALUE_TYPE(discImage)
    /// Whether it stands for no picture at all.
    Q_PROPERTY(bool isNull READ isNull CONSTANT)

public:
    /// In device pixels: one inside the clear one round it.
    static constexpr int smallestSide = 3;

    /// No picture.
    DiscImage() = default;

    /// The picture of that name; none when `catalogue`, which must outlive it, has none.
    static DiscImage named(const Catalogue& catalogue, const QString& name);

    /// A picture from elsewhere.
    static DiscImage of(const images::Image& picture);

    /// `cover` printed on `base`.
    static DiscImage printed(const DiscImage& base, const images::Image& cover, const RecordPrint& print);

    bool isNull() const { return !m_content; }

    /// The catalogue's name of it; empty for a picture from elsewhere and for a printed disc.
    QString name() const;

    /// Drawn `side` device pixels wide and high, premultiplied. A picture from elsewhere is clipped to a
    /// circle with one clear pixel round it, so that it has a smooth edge at every angle; the catalogue's
    /// discs have one of their own. Takes tens of milliseconds: call it off the main thread. Null when the
    /// picture is none or turns out to be broken, or `side` is under `smallestSide`.
    std::shared_ptr<const QImage> render(int side) const;

    /// The same, with a drawing of it at hand for as long as its owner keeps it.
    DiscImage with(const std::shared_ptr<const QImage>& rendering) const;
    /// The drawing that is at hand; null when there is none of that size.
    std::shared_ptr<const QImage> rendering(int side) const;

    /// Whatever is at hand.
    bool operator==(const DiscImage& other) const;

private:
    struct Content;

    explicit DiscImage(std::shared_ptr<const Content> content) : m_content(std::move(content)) {}

    std::shared_ptr<const Content> m_content;
    std::weak_ptr<const QImage> m_rendering;
};

} // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::DiscImage)
