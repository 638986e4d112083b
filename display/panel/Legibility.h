#pragma once

#include "visuals/Colour.h"

namespace tarnwick {

/// The contrast that a line of type of `points` needs with what is under it.
double neededContrast(double points);

/// The contrast of `text`, which is black or white, with `under`.
double contrastOver(const Colour& text, const Colour& under);

/// `under` with `alpha` of `veil` on it, both opaque, mixed as a screen does.
Colour mixed(const Colour& under, const Colour& veil, double alpha);

/// `tint` made darker under white text, lighter under black, in linear light, until the text has `ratio`
/// on it; unchanged when it has.
Colour veilColour(const Colour& tint, const Colour& text, double ratio = 9);

/// The smallest alpha at which `text` has `ratio` on `veil` over `under`: 0 where it has it already. `over`
/// lies on both, with its alpha: a shadow, or the ground of a row.
double neededAlpha(const Colour& text, const Colour& under, const Colour& veil, double ratio,
                   const Colour& over = {0, 0, 0, 0});

/// Whether `colour` makes `text` harder to read than `other` does.
bool isHarder(const Colour& text, const Colour& colour, const Colour& other);

/// The green of the progress bar over `background`: moved towards the text's colour until it has 3 : 1.
Colour progressGreen(const Colour& text, const Colour& background);

} // namespace tarnwick
