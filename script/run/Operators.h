#pragma once

#include "script/syntax/SyntaxTree.h"
#include "script/values/Value.h"

#include <QString>

namespace tarnwick::script {

/// The arithmetic of the language: integers stay integers where the result is one and fits, `/` and `^` give
/// reals. Throws -1700 for what is no number, -2701 for a division by zero, -2702 for a result out of range.
Value calculate(BinaryOperator op, const Value& left, const Value& right);
Value negate(const Value& value);

/// `round`: an integer where one can hold it.
Value rounded(double value, Rounding rounding);

/// `&`: a text takes the right side as text, a list is continued, two records are merged (the left one's
/// fields win), anything else becomes a list of the two. `delimiter` stands between the items of a list that
/// is joined.
Value concatenate(const Value& left, const Value& right, const QString& delimiter);

/// `as …`. Throws -1700 when the language has no such coercion.
Value coerce(const Value& value, CoercionType type, const QString& delimiter);

/// The text of a value, a list's items with `delimiter` between them. Throws -1700.
QString joinedText(const Value& value, const QString& delimiter);

/// A path as the file system has it: a text with colons ("Disk:Music:a.mp3") becomes "/Music/a.mp3".
QString posixPath(const QString& path);

/// A copy that shares no list and no record with `value`. Throws -2706 when it is nested too deeply.
Value deepCopy(const Value& value, int depth = 0);

} // namespace tarnwick::script
