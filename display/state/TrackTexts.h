#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwick {

/// Breaks `text` into lines joined by line feeds: words, the pieces between blanks, are added to a line
/// while its length plus the word's plus 1 stays within `limit` (characters as a reader counts them).
/// A word is never broken; one that is longer stands on a line of its own.
QString wrapWords(const QString& text, int limit);

/// How many characters a reader sees in `text`: a letter with its accents is one, an emoji is one.
qsizetype readerLength(const QString& text);

/// "mm:ss" of whole seconds, minutes not capped. Empty when `seconds` is not finite, negative or out of
/// range.
QString durationText(double seconds);

/// "(2019)". Empty when there is no year, for which Music may also give 0.
QString yearText(std::optional<qint64> year);

/// "Bit Rate: 320 kbps", truncated. Empty when not finite or out of range.
QString bitRateText(double kilobits);

/// "File Size: 5.00 MB" for 5242880. Empty when not finite.
QString fileSizeText(double bytes);

/// "Sample Rate: 96 kHz", truncated, the number as Music gives it. Empty when not finite or out of range.
QString sampleRateText(double rate);

/// The number and the disc before a title: "4.", "4.  cd2", "cd2" or nothing. The disc counts from two
/// discs on.
QString titleLabels(qint64 trackNumber, std::optional<qint64> discNumber, std::optional<qint64> totalDiscs);

} // namespace tarnwick
