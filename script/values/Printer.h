#pragma once

#include "script/values/Descriptor.h"

#include <QByteArray>

namespace tarnwick::script {

/// The value as a script writes it: texts quoted, lists in braces, `missing value`; empty for no value.
QString literal(const Descriptor& value);

/// The value as one line of JSON: no value and `missing value` are null, data is {"data":LENGTH}, an alias
/// its POSIX path, a constant its name, an object its specifier, a record an object.
QByteArray json(const Descriptor& value);

} // namespace tarnwick::script
