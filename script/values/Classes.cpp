#include "script/values/Classes.h"

#include <QHash>

namespace tarnwick::script {

QString classNameOf(Term code) {
    static const QHash<Term, QString> names = {
        {classes::Text, QStringLiteral("text")},       {classes::Integer, QStringLiteral("integer")},
        {classes::Real, QStringLiteral("real")},       {classes::Number, QStringLiteral("number")},
        {classes::Boolean, QStringLiteral("boolean")}, {classes::List, QStringLiteral("list")},
        {classes::Record, QStringLiteral("record")},   {classes::Data, QStringLiteral("data")},
        {classes::Alias, QStringLiteral("alias")},     {classes::Constant, QStringLiteral("constant")},
        {classes::Class, QStringLiteral("class")},     {classes::Script, QStringLiteral("script")},
    };
    return names.value(code);
}

Term classOf(const Value& value) {
    switch (value.kind()) {
    case Kind::Boolean:
        return classes::Boolean;
    case Kind::Integer:
        return classes::Integer;
    case Kind::Real:
        return classes::Real;
    case Kind::Text:
        return classes::Text;
    case Kind::Data:
        return classes::Data;
    case Kind::Alias:
        return classes::Alias;
    case Kind::List:
        return classes::List;
    case Kind::Record:
        return classes::Record;
    case Kind::Constant:
        if (value.asTerm() == classes::Script)
            return classes::Script;
        return classNameOf(value.asTerm()).isEmpty() ? classes::Constant : classes::Class;
    default:
        return classes::Class; // missing value is a class to the language
    }
}

} // namespace tarnwick::script
