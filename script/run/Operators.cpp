#include "script/run/Operators.h"

#include "script/values/Cells.h"
#include "script/values/Coercion.h"
#include "script/values/Snapshot.h"

#include <cmath>
#include <limits>

namespace tarnwick::script {

namespace {

/// The value as a number: what is one already stays as it is.
Value numberFrom(const Value& given) {
    const Value& value = contents(given);
    if (value.isNumber())
        return value;
    const std::optional<double> real = realOf(value);
    if (!real)
        throwCannotMake(value, QLatin1String("number"));
    const std::optional<qint64> integer = integerOf(value);
    if (integer && static_cast<double>(*integer) == *real && !textOf(value)->contains(QLatin1Char('.')))
        return Value::integer(*integer);
    return Value::real(*real);
}

double asDouble(const Value& number) {
    return number.is(Kind::Integer) ? static_cast<double>(number.asInteger()) : number.asReal();
}

Value checked(double result) {
    if (!std::isfinite(result))
        throw Error{-2702, QStringLiteral("The result of a numeric operation was too large.")};
    return Value::real(result);
}

[[noreturn]] void throwDivisionByZero(const Value& left) {
    throw Error{errors::DivisionByZero, QStringLiteral("Can’t divide %1 by zero.").arg(briefLiteral(left))};
}

Value calculateIntegers(BinaryOperator op, qint64 left, qint64 right) {
    qint64 result = 0;
    switch (op) {
    case BinaryOperator::Add:
        if (!__builtin_add_overflow(left, right, &result))
            return Value::integer(result);
        break;
    case BinaryOperator::Subtract:
        if (!__builtin_sub_overflow(left, right, &result))
            return Value::integer(result);
        break;
    case BinaryOperator::Multiply:
        if (!__builtin_mul_overflow(left, right, &result))
            return Value::integer(result);
        break;
    case BinaryOperator::IntegerDivide:
    case BinaryOperator::Modulo:
        if (right == 0)
            throwDivisionByZero(Value::integer(left));
        if (right == -1) // the lowest integer has no opposite
            return op == BinaryOperator::Modulo ? Value::integer(0) : negate(Value::integer(left));
        return Value::integer(op == BinaryOperator::Modulo ? left % right : left / right);
    default:
        break;
    }
    return {};
}

Value calculateReals(BinaryOperator op, double left, double right) {
    switch (op) {
    case BinaryOperator::Add:
        return checked(left + right);
    case BinaryOperator::Subtract:
        return checked(left - right);
    case BinaryOperator::Multiply:
        return checked(left * right);
    case BinaryOperator::Power:
        return checked(std::pow(left, right));
    default:
        break;
    }
    if (op == BinaryOperator::Divide)
        return checked(left / right);
    if (op == BinaryOperator::Modulo)
        return checked(std::fmod(left, right));
    const double quotient = std::trunc(left / right);
    if (std::fabs(quotient) < 0x1p63)
        return Value::integer(static_cast<qint64>(quotient));
    return checked(quotient);
}

Value asList(const Value& value) {
    if (value.is(Kind::List))
        return value;
    if (!value.is(Kind::Record))
        return Value::list({value});
    std::vector<Value> values;
    values.reserve(value.asRecord().size());
    for (const auto& [key, field] : value.asRecord())
        values.push_back(field);
    return Value::list(std::move(values));
}

Value appended(const Value& list, const Value& more) {
    const Value tail = asList(more);
    const std::vector<Value>& left = list.asList();
    const std::vector<Value>& right = tail.asList();
    if (Heap* heap = Heap::current())
        heap->checkListLength(static_cast<qsizetype>(left.size()) + static_cast<qsizetype>(right.size()));
    std::vector<Value> items;
    items.reserve(left.size() + right.size());
    items.insert(items.end(), left.begin(), left.end());
    items.insert(items.end(), right.begin(), right.end());
    return Value::list(std::move(items));
}

Value merged(const Value& left, const Value& right) {
    Value result = Value::record(left.asRecord());
    for (const auto& [key, field] : right.asRecord()) {
        if (!recordIn(result).find(key))
            recordIn(result).set(key, field);
    }
    return result;
}

} // namespace

Value calculate(BinaryOperator op, const Value& givenLeft, const Value& givenRight) {
    if (givenLeft.is(Kind::Integer) && givenRight.is(Kind::Integer)) {
        Value result = calculateIntegers(op, givenLeft.asInteger(), givenRight.asInteger());
        if (!result.isNothing())
            return result;
    }
    const Value left = numberFrom(givenLeft);
    const Value right = numberFrom(givenRight);
    if (left.is(Kind::Integer) && right.is(Kind::Integer)) {
        Value result = calculateIntegers(op, left.asInteger(), right.asInteger());
        if (!result.isNothing())
            return result;
    }
    const bool divides =
        op == BinaryOperator::Divide || op == BinaryOperator::IntegerDivide || op == BinaryOperator::Modulo;
    if (divides && asDouble(right) == 0.0)
        throwDivisionByZero(left);
    return calculateReals(op, asDouble(left), asDouble(right));
}

Value negate(const Value& value) {
    const Value number = numberFrom(value);
    if (number.is(Kind::Integer) && number.asInteger() != std::numeric_limits<qint64>::min())
        return Value::integer(-number.asInteger());
    return Value::real(-asDouble(number));
}

Value rounded(double value, Rounding rounding) {
    double result = value;
    switch (rounding) {
    case Rounding::ToNearest:
        result = std::nearbyint(value);
        break;
    case Rounding::AsTaught:
        result = std::round(value);
        break;
    case Rounding::Up:
        result = std::ceil(value);
        break;
    case Rounding::Down:
        result = std::floor(value);
        break;
    case Rounding::TowardZero:
        result = std::trunc(value);
        break;
    }
    const bool fits = result >= -0x1p63 && result < 0x1p63;
    return fits ? Value::integer(static_cast<qint64>(result)) : Value::real(result);
}

Value concatenate(const Value& givenLeft, const Value& givenRight, const QString& delimiter) {
    const Value& left = contents(givenLeft);
    const Value& right = contents(givenRight);
    if (left.is(Kind::Text) && !right.is(Kind::Record) && !right.is(Kind::Object) && !right.is(Kind::Data)) {
        const QString tail = joinedText(right, delimiter);
        if (Heap* heap = Heap::current())
            heap->checkTextLength(textIn(left).size() + tail.size());
        return Value::text(textIn(left) + tail);
    }
    if (left.is(Kind::List))
        return appended(left, right);
    if (left.is(Kind::Record) && right.is(Kind::Record))
        return merged(left, right);
    return appended(Value::list({left}), right);
}

Value coerce(const Value& given, CoercionType type, const QString& delimiter) {
    const Value& value = contents(given);
    switch (type) {
    case CoercionType::Text:
        return value.is(Kind::Text) ? value : Value::text(joinedText(value, delimiter));
    case CoercionType::Integer:
        return Value::integer(requireInteger(value));
    case CoercionType::Real: {
        const std::optional<double> real = realOf(value);
        if (!real)
            throwCannotMake(value, QLatin1String("real"));
        return Value::real(*real);
    }
    case CoercionType::Number:
        return numberFrom(value);
    case CoercionType::Boolean:
        return Value::boolean(requireBoolean(value));
    case CoercionType::List:
        return asList(value);
    case CoercionType::Record:
        if (!value.is(Kind::Record))
            throwCannotMake(value, QLatin1String("record"));
        return value;
    case CoercionType::Alias:
        if (value.is(Kind::Text))
            return Value::alias(posixPath(textIn(value)));
        if (!value.is(Kind::Alias))
            throwCannotMake(value, QLatin1String("alias"));
        return value;
    }
    return {};
}

QString joinedText(const Value& value, const QString& delimiter) {
    const std::optional<QString> text = joinedTextOf(value, delimiter);
    if (!text)
        throwCannotMake(value, QLatin1String("text"));
    return *text;
}

QString posixPath(const QString& path) {
    if (path.startsWith(QLatin1Char('/')) || !path.contains(QLatin1Char(':')))
        return path;
    // Volume:folder:file, the way the language wrote paths before.
    QString rest = path.mid(path.indexOf(QLatin1Char(':')));
    return rest.replace(QLatin1Char(':'), QLatin1Char('/'));
}

Value deepCopy(const Value& value, int depth) {
    if (depth > MaximumNesting)
        throw Error{errors::StackOverflow, QStringLiteral("Stack overflow.")};
    if (value.is(Kind::List)) {
        Value copy = Value::list();
        for (const Value& item : value.asList())
            listIn(copy).append(deepCopy(item, depth + 1));
        return copy;
    }
    if (value.is(Kind::Record)) {
        Value copy = Value::record();
        for (const auto& [key, field] : value.asRecord())
            recordIn(copy).set(key, deepCopy(field, depth + 1));
        return copy;
    }
    return value;
}

} // namespace tarnwick::script
