#pragma once

#include "script/values/Descriptor.h"
#include "script/values/Value.h"

namespace tarnwick::script {

/// What a reply may hold at most: items in all lists together, and units in all texts together. A list that
/// stands in several places counts as often.
inline constexpr qsizetype MaximumReplyItems = 1'000'000;
inline constexpr qsizetype MaximumReplyText = 32'000'000;

/// A value as it is now, to be kept or handed to another thread. Throws error -2706 for lists nested too
/// deeply (or containing themselves) and -108 for too much.
Descriptor snapshot(const Value& value);

/// The value as a script writes it, for an error's message: what is long or deep is cut to "…".
QString briefLiteral(const Value& value);

} // namespace tarnwick::script
