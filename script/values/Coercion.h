#pragma once

#include "script/values/Value.h"

#include <optional>

namespace tarnwick::script {

// The language's coercions. The first group is for asking, the second throws error -1700
// ("Can’t make … into type …."). All of them see through a loop variable to its item, and take a list
// of one item for that item.

/// Texts, numbers, booleans, constants, aliases, `missing value`, and lists of these, joined.
std::optional<QString> textOf(const Value& value);
/// The same with `delimiter` between the items of a list.
std::optional<QString> joinedTextOf(const Value& value, const QString& delimiter);
/// Integers, reals (rounded, half to even), booleans, and texts that are such a number.
std::optional<qint64> integerOf(const Value& value);
/// Integers, reals, booleans, and texts that are a number.
std::optional<double> realOf(const Value& value);
/// Booleans, the integers 0 and 1, the texts "true" and "false".
std::optional<bool> booleanOf(const Value& value);

QString requireText(const Value& value);
qint64 requireInteger(const Value& value);
double requireReal(const Value& value);
bool requireBoolean(const Value& value);

/// Throws error -1700: "Can’t make VALUE into type TYPE."
[[noreturn]] void throwCannotMake(const Value& value, QLatin1String type);

/// How the language writes a real as text: 12 significant digits, always with a fraction, with an
/// exponent from 10000 on and up to 0.0001 ("1.0", "245.5", "1.2E+4").
QString realText(double value);

/// What two texts have in common exactly when the language takes them for equal (letter case and the way
/// accents are composed do not count). An application's index over texts goes by it.
QString comparisonKey(const QString& text);

} // namespace tarnwick::script
