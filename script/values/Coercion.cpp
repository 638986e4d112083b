#include "script/values/Coercion.h"

#include "script/values/Cells.h"
#include "script/values/Error.h"
#include "script/values/Snapshot.h"

#include <QLocale>

#include <cmath>

namespace tarnwick::script {

namespace {

/// The value that coercions look at: the item of a loop variable, the one item of a list.
const Value& single(const Value& given) {
    const Value* value = &contents(given);
    for (int depth = 0; value->is(Kind::List) && value->asList().size() == 1 && depth < MaximumNesting;
         ++depth)
        value = &contents(value->asList().front());
    return *value;
}

std::optional<double> parseNumber(const QString& text) {
    bool isNumber = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &isNumber);
    if (!isNumber || !std::isfinite(number))
        return {};
    return number;
}

std::optional<qint64> rounded(double value) {
    const double nearest = std::nearbyint(value);
    if (!(nearest >= -0x1p63 && nearest < 0x1p63))
        return {};
    return static_cast<qint64>(nearest);
}

/// Joins what is in a list and in the lists in it, within a budget: a list may stand in many places.
class Joiner {
public:
    explicit Joiner(const QString& delimiter) : m_delimiter(delimiter) {}

    /// False when something in it has no text.
    bool append(const Value& given, int depth = 0) {
        const Value& value = contents(given);
        if (!value.is(Kind::List))
            return appendText(textOf(value));
        if (depth > MaximumNesting)
            throw Error{errors::StackOverflow, QStringLiteral("Stack overflow.")};
        bool isFirst = true;
        for (const Value& item : value.asList()) {
            if (--m_budget < 0)
                throw Error{errors::OutOfMemory, QStringLiteral("Out of memory.")};
            if ((!isFirst && !appendText(m_delimiter)) || !append(item, depth + 1))
                return false;
            isFirst = false;
        }
        return true;
    }

    QString text;

private:
    bool appendText(const std::optional<QString>& more) {
        if (!more)
            return false;
        if (Heap* heap = Heap::current())
            heap->checkTextLength(text.size() + more->size());
        text += *more;
        return true;
    }

    const QString& m_delimiter;
    int m_budget = 2'000'000;
};

template <typename Result>
Result require(std::optional<Result> result, const Value& value, const char* type) {
    if (!result)
        throwCannotMake(value, QLatin1String(type));
    return *result;
}

} // namespace

void throwCannotMake(const Value& value, QLatin1String type) {
    throw Error{errors::CoercionFailed,
                QStringLiteral("Can’t make %1 into type %2.").arg(briefLiteral(value), type)};
}

std::optional<QString> textOf(const Value& given) {
    const Value& value = contents(given);
    switch (value.kind()) {
    case Kind::Text:
        return textIn(value);
    case Kind::Missing:
        return QStringLiteral("missing value");
    case Kind::Boolean:
        return value.asBoolean() ? QStringLiteral("true") : QStringLiteral("false");
    case Kind::Integer:
        return QString::number(value.asInteger());
    case Kind::Real:
        return realText(value.asReal());
    case Kind::Constant:
        return value.constantName();
    case Kind::Alias:
        return value.asPath();
    case Kind::List:
        return joinedTextOf(value, QString());
    default:
        return {};
    }
}

std::optional<QString> joinedTextOf(const Value& value, const QString& delimiter) {
    Joiner joiner(delimiter);
    if (!joiner.append(value))
        return {};
    return joiner.text;
}

std::optional<qint64> integerOf(const Value& given) {
    const Value& value = single(given);
    switch (value.kind()) {
    case Kind::Integer:
        return value.asInteger();
    case Kind::Boolean:
        return value.asBoolean() ? 1 : 0;
    case Kind::Real:
        return rounded(value.asReal());
    case Kind::Text: {
        bool isInteger = false;
        const qint64 integer = textIn(value).trimmed().toLongLong(&isInteger);
        if (isInteger)
            return integer;
        const std::optional<double> number = parseNumber(textIn(value));
        return number ? rounded(*number) : std::nullopt;
    }
    default:
        return {};
    }
}

std::optional<double> realOf(const Value& given) {
    const Value& value = single(given);
    switch (value.kind()) {
    case Kind::Integer:
        return static_cast<double>(value.asInteger());
    case Kind::Boolean:
        return value.asBoolean() ? 1.0 : 0.0;
    case Kind::Real:
        return value.asReal();
    case Kind::Text:
        return parseNumber(textIn(value));
    default:
        return {};
    }
}

std::optional<bool> booleanOf(const Value& given) {
    const Value& value = single(given);
    switch (value.kind()) {
    case Kind::Boolean:
        return value.asBoolean();
    case Kind::Integer:
        if (value.asInteger() == 0 || value.asInteger() == 1)
            return value.asInteger() == 1;
        return {};
    case Kind::Text:
        if (textIn(value).compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
            return true;
        if (textIn(value).compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            return false;
        return {};
    default:
        return {};
    }
}

QString requireText(const Value& value) { return require(textOf(value), value, "text"); }

qint64 requireInteger(const Value& value) { return require(integerOf(value), value, "integer"); }

double requireReal(const Value& value) { return require(realOf(value), value, "number"); }

bool requireBoolean(const Value& value) { return require(booleanOf(value), value, "boolean"); }

QString realText(double value) {
    const double size = std::fabs(value);
    if (!std::isfinite(value) || size == 0.0)
        return size == 0.0 ? QStringLiteral("0.0") : QString::number(value);
    if (size < 10000.0 && size > 0.0001) {
        QString text = QString::number(value, 'g', 12);
        if (!text.contains(QLatin1Char('.')))
            text += QLatin1String(".0");
        return text;
    }
    // Twelve significant digits, without the zeros at their end but for the first: 1.0E+4.
    QString text = QString::number(value, 'e', 11).toUpper();
    const qsizetype exponent = text.indexOf(QLatin1Char('E'));
    qsizetype end = exponent;
    while (text.at(end - 1) == QLatin1Char('0') && text.at(end - 2) != QLatin1Char('.'))
        --end;
    const int power = text.mid(exponent + 1).toInt();
    return QStringLiteral("%1E%2%3").arg(text.left(end),
                                         power < 0 ? QStringLiteral("-") : QStringLiteral("+"),
                                         QString::number(std::abs(power)));
}

QString comparisonKey(const QString& text) {
    return text.normalized(QString::NormalizationForm_C).toCaseFolded();
}

} // namespace tarnwick::script
