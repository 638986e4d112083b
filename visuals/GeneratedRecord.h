#pragma once

#include "visuals/DiscImage.h"

#include <functional>

namespace tarnwick {

/// The print of a compact disc, from which those of the other discs are scaled.
inline constexpr RecordPrint standardPrint{300, 30, 5};

/// The name of the picture on which a record with `tag` is printed; empty when there is none for it.
QString generatedRecordBase(const QString& tag);

/// Every tag that a record is made for, in the order of the choices.
QStringList generatedRecordTags();

/// `print` as it suits the kind of disc that `tag` is: a label in the middle of a record, nearly the whole
/// face of a compact disc. `tag` must have a base.
RecordPrint printFor(const QString& tag, const RecordPrint& print);

/// The disc `tag` bearing `cover`. None when no record is made for such a tag, and, with a line for `log`,
/// when the picture it is printed on is missing. Where the cover's pixels turn out broken, drawing gives the
/// disc without a print.
DiscImage makeGeneratedRecord(const Catalogue& catalogue, const images::Image& cover, const QString& tag,
                              const RecordPrint& print, const std::function<void(const QString&)>& log);

} // namespace tarnwick
