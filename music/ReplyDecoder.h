#pragma once

#include "music/DiscTrack.h"
#include "script/values/Descriptor.h"

#include <QList>
#include <QStringList>

#include <optional>

/// Readings of script replies that take several steps.
namespace tarnwick::replies {

/// The text of item `index` (counted from 1), `fallback` when the item is absent or has none.
QString itemText(const script::Descriptor& reply, int index, const QString& fallback);

/// Item `index` as a number; 0 when absent.
double itemNumber(const script::Descriptor& reply, int index);

/// The texts of a list's items; items without a text are skipped.
QStringList texts(const script::Descriptor& list);

/// The same, read as decimal numbers; texts that are none are skipped.
QList<double> numbers(const script::Descriptor& list);

/// The discs of a tracks-by-disc list, ascending, titles by track number. Entries that are no disc or no
/// track are skipped; a number that stands twice is the later disc.
QList<DiscTrack> tracksByDisc(const script::Descriptor& list);

} // namespace tarnwick::replies
