#pragma once

#include "display/veil/VeilField.h"
#include "platform/images/Image.h"
#include "visuals/Colour.h"
#include "visuals/DiscImage.h"

#include <QImage>
#include <QObject>
#include <QRectF>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>
#include <vector>

namespace tarnwick {

// Soft veils behind lines of text, in the background's own tint, as strong as what lies under a line makes
// necessary. Positions are points in the window.

/// A line that must be legible.
struct VeilLine {
    QRectF box;
    double ratio = 4.5; ///< the contrast that its text needs

    friend bool operator==(const VeilLine&, const VeilLine&) = default;
};

/// What lies under the lines, back to front.
struct VeilScene {
    QSizeF window;
    double pixelRatio = 1; ///< device pixels of a point
    Colour text = colours::white;
    std::vector<Colour>
        background; ///< painted from top to bottom; where it lets through, the text's opposite
    std::optional<images::Image> logo; ///< stretched over all of the background, when nothing plays

    DiscImage record; ///< none: not shown. Any angle counts
    QPointF recordCentre;
    double recordDiameter = 0;

    std::optional<images::Image> cassette; ///< in place of the record, does not turn
    QRectF cassettePlace;

    std::optional<images::Image> cover;
    QRectF coverPlace;
    double coverRadius = 0; ///< of its corners

    std::vector<VeilLine> lines;
    QRectF list; ///< where rows on black at 70 % need a veil of their own; empty for none

    friend bool operator==(const VeilScene&, const VeilScene&) = default;
};

/// One veil, ready to be painted.
struct VeilPicture {
    Q_GADGET
    QML_VALUE_TYPE(veilPicture)
    Q_PROPERTY(bool isPresent READ isPresent)

public:
    QImage picture;       ///< premultiplied; null where no veil is needed
    QRectF place;         ///< in fractions of its surface: the window, the square round the record, the cover
    double strongest = 0; ///< the largest alpha in it

    bool isPresent() const { return !picture.isNull(); }

    friend bool operator==(const VeilPicture&, const VeilPicture&) = default;
};

/// The veils over each surface, clipped to its outline.
struct Veils {
    Colour colour = colours::black;
    VeilPicture background;
    VeilPicture record; ///< over the cassette where there is one
    VeilPicture cover;
    double rowAlpha = 0; ///< of the colour, under the rows of the list
};

/// Looks at the scene and makes its veils. Takes tens of milliseconds: call it off the main thread.
Veils makeVeils(const VeilScene& scene);

/// The colour of `background`, painted from top to bottom over `base`, at a fraction of the height.
Colour gradientAt(const std::vector<Colour>& background, const Colour& base, double fraction);

} // namespace tarnwick
