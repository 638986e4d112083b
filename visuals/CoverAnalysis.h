#pragma once

#include "settings/Options.h"
#include "visuals/Colour.h"

#include <QImage>

#include <optional>
#include <vector>

namespace tarnwick {

/// The colours that a background style takes from a cover.
struct BackgroundColours {
    std::vector<Colour> gradient; ///< top to bottom, two or three
    std::vector<Colour> darkPair; ///< empty when the style leaves the dark pair alone
    Colour text;                  ///< black or white

    friend bool operator==(const BackgroundColours&, const BackgroundColours&) = default;
};

/// What a style shows when there is no cover or nothing in it that it could use.
BackgroundColours fallbackColours();

/// The mean over all pixels, rounded to 8 bits a channel, alpha included. None for an empty picture.
std::optional<Colour> meanColour(const QImage& cover);

/// The opaque mean of the middle 80 % of the lowest 10 %. None when that holds no pixel.
std::optional<Colour> bottomBandColour(const QImage& cover);

/// The opaque mean of the central half in each direction. None when that holds no pixel.
std::optional<Colour> centreColour(const QImage& cover);

/// The pixels one sixth in from each corner and the one in the middle, by luma, darkest first; equal
/// luma keeps top before bottom, left before right, with the middle between. None when there is none.
std::vector<Colour> samplePoints(const QImage& cover);

/// Of every sixth pixel of every sixth row that is neither nearly transparent, grey, black nor white,
/// the three most saturated, the first of equals first. Fewer when there are no three.
std::vector<Colour> mostSaturatedColours(const QImage& cover);

/// What `style` makes of `cover`, which must be RGBA8888 with packed rows, or null for none. Any
/// thread. `random` is not a style of its own and gives the fallback.
BackgroundColours analyse(BackgroundOption style, const QImage& cover);

/// About how many pixels `analyse` would read, weighted by what reading one costs.
qint64 analysisCost(BackgroundOption style, QSize cover);

} // namespace tarnwick
