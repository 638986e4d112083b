#include "script/values/Error.h"

namespace tarnwick::script {

QString Error::toString() const { return QStringLiteral("%1 (%2)").arg(message, QString::number(number)); }

QString Error::toStringWithPlace() const {
    if (range.line == 0)
        return toString();
    return QStringLiteral("%1:%2: %3")
        .arg(QString::number(range.line), QString::number(range.column), toString());
}

} // namespace tarnwick::script
