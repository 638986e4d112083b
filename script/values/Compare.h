#pragma once

#include "script/values/Value.h"

namespace tarnwick::script {

/// `=`: same kind of value and same content, numbers by value. A loop variable is not the item it stands for.
/// Throws error -2706 for lists nested too deeply, or too much to compare.
bool isEqual(const Value& left, const Value& right, bool considersCase = false);

/// `<` and its relatives: negative, 0 or positive. The right one is coerced to the left one's kind; throws
/// error -1700 when that fails or when the left one has no order.
int order(const Value& left, const Value& right, bool considersCase = false);

/// Whether two texts are equal, without regard to letter case unless `considersCase`.
bool isEqualText(const QString& left, const QString& right, bool considersCase);

/// `contains`, `starts with`, `ends with`: of texts a part, of lists a stretch of items, of records fields.
bool contains(const Value& whole, const Value& part, bool considersCase = false);
bool startsWith(const Value& whole, const Value& part, bool considersCase = false);
bool endsWith(const Value& whole, const Value& part, bool considersCase = false);

} // namespace tarnwick::script
