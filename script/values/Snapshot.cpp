#include "script/values/Snapshot.h"

#include "script/values/Application.h"
#include "script/values/Cells.h"
#include "script/values/Printer.h"

namespace tarnwick::script {

namespace {

/// Copies a value within a budget. A strict one throws when it is used up, another one writes "…".
class Copier {
public:
    Copier(qsizetype items, qsizetype units, int depth, bool strict)
        : m_items(items), m_units(units), m_depth(depth), m_strict(strict) {}

    Descriptor copy(const Value& given, int depth = 0) {
        if (given.is(Kind::ItemReference) && !m_strict && !isReachable(given))
            return ellipsis();
        const Value& value = contents(given);
        switch (value.kind()) {
        case Kind::Nothing:
            return {};
        case Kind::Missing:
            return Descriptor::missing();
        case Kind::Boolean:
            return Descriptor::boolean(value.asBoolean());
        case Kind::Integer:
            return Descriptor::integer(value.asInteger());
        case Kind::Real:
            return Descriptor::real(value.asReal());
        case Kind::Text:
            return copyText(textIn(value));
        case Kind::Constant:
            return Descriptor::constant(value.constantName());
        case Kind::Data:
            return Descriptor::data(value.asData());
        case Kind::Alias:
            return Descriptor::alias(value.asPath());
        case Kind::Object:
            return Descriptor::object(value.asObject()->specifier());
        case Kind::List:
            return copyList(value, depth);
        case Kind::Record:
            return copyRecord(value, depth);
        case Kind::ItemReference:
            break;
        }
        return {};
    }

private:
    static Descriptor ellipsis() { return Descriptor::constant(QStringLiteral("…")); }

    static bool isReachable(const Value& reference) {
        const ItemReferenceCell& cell = referenceIn(reference);
        const auto& items = listIn(cell.list).items;
        return cell.index < static_cast<qsizetype>(items.size()) &&
               !items[static_cast<std::size_t>(cell.index)].is(Kind::ItemReference);
    }

    bool isTooDeep(int depth) const {
        if (depth < m_depth)
            return false;
        if (m_strict)
            throw Error{errors::StackOverflow, QStringLiteral("Stack overflow.")};
        return true;
    }

    bool spend(qsizetype& budget, qsizetype amount) const {
        if (budget >= amount) {
            budget -= amount;
            return true;
        }
        if (m_strict)
            throw Error{errors::OutOfMemory, QStringLiteral("Out of memory.")};
        return false;
    }

    Descriptor copyText(const QString& text) {
        if (spend(m_units, text.size()))
            return Descriptor::text(text);
        const QString begin = text.left(m_units);
        m_units = 0;
        return Descriptor::text(begin + QChar(0x2026));
    }

    Descriptor copyList(const Value& value, int depth) {
        if (isTooDeep(depth))
            return ellipsis();
        Descriptor::List items;
        const std::vector<Value>& source = value.asList();
        if (m_strict)
            items.reserve(source.size());
        for (const Value& item : source) {
            if (!spend(m_items, 1)) {
                items.push_back(ellipsis());
                break;
            }
            items.push_back(copy(item, depth + 1));
        }
        return Descriptor::list(std::move(items));
    }

    Descriptor copyRecord(const Value& value, int depth) {
        if (isTooDeep(depth))
            return ellipsis();
        Descriptor::Record fields;
        for (const auto& [key, field] : value.asRecord()) {
            if (!spend(m_items, 1)) {
                fields.emplace_back(key, ellipsis());
                break;
            }
            fields.emplace_back(key, copy(field, depth + 1));
        }
        return Descriptor::record(std::move(fields));
    }

    qsizetype m_items;
    qsizetype m_units;
    int m_depth;
    bool m_strict;
};

} // namespace

Descriptor snapshot(const Value& value) {
    return Copier(MaximumReplyItems, MaximumReplyText, MaximumNesting, true).copy(value);
}

QString briefLiteral(const Value& value) { return literal(Copier(20, 200, 8, false).copy(value)); }

} // namespace tarnwick::script
