#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

/// Values as they come over the bus, of whatever type, read as what they should have been.
namespace tarnwick::players {

/// `value` without the bus's own types: basic values, texts, QStringList, QVariantList, QVariantMap.
/// What is nested deeper than anything meant to be read, or longer, is left out.
QVariant plainValue(const QVariant& value);

/// The same of a map, its keys in lower case when `foldKeys`.
QVariantMap plainMap(const QVariantMap& map, bool foldKeys = false);

/// Longer than any text that a player shows.
inline constexpr qsizetype longestText = 20000;

/// A text or list of texts as a list: trimmed, without empty ones and repetitions. Each is cut after
/// `longest` letters.
QStringList textsOf(const QVariant& value, qsizetype longest = longestText);

/// The texts of `textsOf` with ", " between them; empty for none.
QString textOf(const QVariant& value);

/// A number of any type, or the one a text begins with ("2/12" is 2); none for anything else and for
/// what is not finite.
std::optional<double> numberOf(const QVariant& value);

/// The same, cut to a whole number that fits `int`; 0 for none and for negative ones.
int countOf(const QVariant& value);

/// A boolean; none for any other type.
std::optional<bool> flagOf(const QVariant& value);

} // namespace tarnwick::players
