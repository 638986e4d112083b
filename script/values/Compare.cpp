#include "script/values/Compare.h"

#include "script/values/Application.h"
#include "script/values/Cells.h"
#include "script/values/Coercion.h"
#include "script/values/ComposedText.h"

#include <algorithm>

namespace tarnwick::script {

namespace {

Qt::CaseSensitivity sensitivity(bool considersCase) {
    return considersCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

double numberOf(const Value& value) {
    return value.is(Kind::Integer) ? static_cast<double>(value.asInteger()) : value.asReal();
}

bool isAscii(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

/// Compares trees with a budget: two lists that hold the same list twice, and so on forty times, would
/// otherwise take for ever.
class Equality {
public:
    explicit Equality(bool considersCase) : m_considersCase(considersCase) {}

    bool operator()(const Value& left, const Value& right, int depth = 0) {
        if (depth > MaximumNesting || --m_budget < 0)
            throw Error{errors::StackOverflow, QStringLiteral("Stack overflow.")};
        if (left.isNumber() && right.isNumber())
            return equalNumbers(left, right);
        if (left.kind() != right.kind())
            return false;
        switch (left.kind()) {
        case Kind::Nothing:
        case Kind::Missing:
            return true;
        case Kind::Boolean:
            return left.asBoolean() == right.asBoolean();
        case Kind::Text:
            return isEqualText(textIn(left), textIn(right), m_considersCase);
        case Kind::Constant:
            return left.asTerm() == right.asTerm();
        case Kind::Data:
            return left.asData() == right.asData();
        case Kind::Alias:
            return left.asPath() == right.asPath();
        case Kind::Object:
            return left.asObject()->isSame(*right.asObject());
        case Kind::List:
            return equalLists(left, right, depth);
        case Kind::Record:
            return equalRecords(left, right, depth);
        case Kind::ItemReference:
            return equalReferences(left, right);
        default:
            return false;
        }
    }

private:
    static bool equalNumbers(const Value& left, const Value& right) {
        if (left.is(Kind::Integer) && right.is(Kind::Integer))
            return left.asInteger() == right.asInteger();
        return numberOf(left) == numberOf(right);
    }

    static bool equalReferences(const Value& left, const Value& right) {
        const ItemReferenceCell& a = referenceIn(left);
        const ItemReferenceCell& b = referenceIn(right);
        return a.index == b.index && a.list.cell() == b.list.cell();
    }

    bool equalLists(const Value& left, const Value& right, int depth) {
        if (left.cell() == right.cell())
            return true;
        const std::vector<Value>& a = left.asList();
        const std::vector<Value>& b = right.asList();
        return a.size() == b.size() &&
               std::equal(a.begin(), a.end(), b.begin(),
                          [&](const Value& x, const Value& y) { return (*this)(x, y, depth + 1); });
    }

    bool equalRecords(const Value& left, const Value& right, int depth) {
        if (left.cell() == right.cell())
            return true;
        if (left.asRecord().size() != right.asRecord().size())
            return false;
        return std::all_of(left.asRecord().begin(), left.asRecord().end(), [&](const auto& field) {
            const Value* other = recordIn(right).find(field.first);
            return other && (*this)(field.second, *other, depth + 1);
        });
    }

    bool m_considersCase;
    int m_budget = 4'000'000;
};

bool hasStretchAt(const std::vector<Value>& whole, const std::vector<Value>& part, std::size_t at,
                  bool considersCase) {
    for (std::size_t i = 0; i < part.size(); ++i) {
        if (!isEqual(whole[at + i], part[i], considersCase))
            return false;
    }
    return true;
}

Value asListValue(const Value& value) { return value.is(Kind::List) ? value : Value::list({value}); }

} // namespace

bool isEqual(const Value& left, const Value& right, bool considersCase) {
    return Equality(considersCase)(left, right);
}

bool isEqualText(const QString& left, const QString& right, bool considersCase) {
    if (left.compare(right, sensitivity(considersCase)) == 0)
        return true;
    if (isAscii(left) && isAscii(right))
        return false;
    return ComposedText::key(left, considersCase) == ComposedText::key(right, considersCase);
}

int order(const Value& givenLeft, const Value& givenRight, bool considersCase) {
    const Value& left = contents(givenLeft);
    const Value& right = contents(givenRight);
    if (left.is(Kind::Integer) && right.is(Kind::Integer))
        return left.asInteger() < right.asInteger() ? -1 : left.asInteger() > right.asInteger();
    if (left.is(Kind::Text)) {
        const QString other = requireText(right);
        if (isAscii(textIn(left)) && isAscii(other))
            return textIn(left).compare(other, sensitivity(considersCase));
        return ComposedText::key(textIn(left), considersCase)
            .compare(ComposedText::key(other, considersCase));
    }
    const double a = requireReal(left);
    const double b = requireReal(right);
    return a < b ? -1 : a > b;
}

bool contains(const Value& givenWhole, const Value& givenPart, bool considersCase) {
    const Value& whole = contents(givenWhole);
    const Value& part = contents(givenPart);
    if (whole.is(Kind::List)) {
        const Value stretch = asListValue(part);
        const std::vector<Value>& items = whole.asList();
        const std::vector<Value>& wanted = stretch.asList();
        for (std::size_t at = 0; at + wanted.size() <= items.size(); ++at) {
            if (hasStretchAt(items, wanted, at, considersCase))
                return true;
        }
        return false;
    }
    if (whole.is(Kind::Record) && part.is(Kind::Record)) {
        return std::all_of(part.asRecord().begin(), part.asRecord().end(), [&](const auto& field) {
            const Value* own = recordIn(whole).find(field.first);
            return own && isEqual(*own, field.second, considersCase);
        });
    }
    const ComposedText text(requireText(whole), considersCase);
    return text.indexOf({requireText(part), considersCase}) >= 0;
}

bool startsWith(const Value& givenWhole, const Value& givenPart, bool considersCase) {
    const Value& whole = contents(givenWhole);
    const Value& part = contents(givenPart);
    if (whole.is(Kind::List)) {
        const Value stretch = asListValue(part);
        return stretch.asList().size() <= whole.asList().size() &&
               hasStretchAt(whole.asList(), stretch.asList(), 0, considersCase);
    }
    const ComposedText text(requireText(whole), considersCase);
    return text.hasAt(0, {requireText(part), considersCase});
}

bool endsWith(const Value& givenWhole, const Value& givenPart, bool considersCase) {
    const Value& whole = contents(givenWhole);
    const Value& part = contents(givenPart);
    if (whole.is(Kind::List)) {
        const Value stretch = asListValue(part);
        const std::size_t size = whole.asList().size();
        const std::size_t length = stretch.asList().size();
        return length <= size && hasStretchAt(whole.asList(), stretch.asList(), size - length, considersCase);
    }
    const ComposedText text(requireText(whole), considersCase);
    const ComposedText end(requireText(part), considersCase);
    return text.hasAt(text.size() - end.size(), end);
}

} // namespace tarnwick::script
