#include "script/run/Evaluator.h"
#include "script/run/Pieces.h"
#include "script/values/Coercion.h"

#include <algorithm>

namespace tarnwick::script {

namespace {

Value listOf(const std::vector<ObjectPointer>& objects) {
    std::vector<Value> values;
    values.reserve(objects.size());
    for (const ObjectPointer& object : objects)
        values.push_back(Value::object(object));
    return Value::list(std::move(values));
}

} // namespace

Value Evaluator::evaluateElement(const ElementExpression& element) {
    const ElementQuery wanted = makeQuery(element);
    try {
        std::vector<ObjectPointer> found = findElements(element, wanted);
        if (element.isMany())
            return listOf(found);
        if (found.empty())
            throw Error::noSuchObject();
        return Value::object(std::move(found.front()));
    } catch (const Error& error) {
        rethrow(error, element.range, "Can’t get %1.");
    }
}

std::vector<ObjectPointer> Evaluator::findElements(const ElementExpression& element,
                                                   const ElementQuery& wanted) {
    if (element.condition && !element.filter)
        return findByTrying(element, wanted);
    return wanted.container->elements(wanted.forApplication());
}

/// A condition that the application cannot be given is tried on each element, as the target.
std::vector<ObjectPointer> Evaluator::findByTrying(const ElementExpression& element,
                                                   const ElementQuery& wanted) {
    Query all{.elementClass = wanted.query.elementClass};
    all.filter = wanted.hasFilter ? &wanted.filter : nullptr;
    std::vector<ObjectPointer> matching;
    for (ObjectPointer& object : wanted.container->elements(all)) {
        tick();
        Value target = std::exchange(m_target, Value::object(object));
        try {
            const bool matches = evaluateCondition(*element.condition);
            m_target = std::move(target);
            if (matches)
                matching.push_back(std::move(object));
        } catch (...) {
            m_target = std::move(target);
            throw;
        }
    }
    const auto [first, last] = wanted.query.within(static_cast<qint64>(matching.size()));
    return {matching.begin() + first, matching.begin() + last};
}

Evaluator::ElementQuery Evaluator::makeQuery(const ElementExpression& element) {
    ElementQuery wanted;
    const Value container = containerOf(element.container);
    if (!container.is(Kind::Object))
        throwCannotGet(element.range);
    wanted.container = container.asObject();
    wanted.query.elementClass = element.elementClass;
    if (element.filter) {
        wanted.filter = makeFilter(*element.filter);
        wanted.hasFilter = true;
    }
    select(wanted, element.selection, element.range);
    return wanted;
}

void Evaluator::select(ElementQuery& wanted, const Selection& selection, const SourceRange& range) {
    const auto narrow = [&wanted](Filter leaf) {
        wanted.filter =
            wanted.hasFilter ? Filter{.op = Filter::Operator::And, .operands = {wanted.filter, leaf}} : leaf;
        wanted.hasFilter = true;
        wanted.query.to = 1;
    };
    const auto position = [&](const Value& value) {
        const qint64 given = requireInteger(value);
        if (given == 0)
            throw Error{errors::BadIndex,
                        QStringLiteral("Can’t get %1. Invalid index.").arg(textOfPlace(range)), range};
        return given;
    };
    switch (selection.form) {
    case SelectionForm::Every:
        return;
    case SelectionForm::Name:
        narrow(equality(terms::Name, evaluate(*selection.first)));
        return;
    case SelectionForm::Id:
        narrow(equality(terms::Id, evaluate(*selection.first)));
        return;
    case SelectionForm::Index: {
        const Value index = contents(evaluate(*selection.first));
        if (index.is(Kind::Text)) {
            narrow(equality(terms::Name, index));
            return;
        }
        wanted.query.from = wanted.query.to = position(index);
        return;
    }
    case SelectionForm::Range:
        wanted.query.from = position(evaluate(*selection.first));
        wanted.query.to = position(evaluate(*selection.last));
        return;
    case SelectionForm::Middle:
    case SelectionForm::Some: {
        qint64 count = 0;
        try {
            count = wanted.container->count(wanted.forApplication());
        } catch (const Error& error) {
            rethrow(error, range, "Can’t get %1.");
        }
        if (count == 0)
            throwCannotGet(range);
        const qint64 at = selection.form == SelectionForm::Middle
                              ? (count + 1) / 2
                              : 1 + m_host.random(static_cast<quint32>(std::min<qint64>(count, 0xffffffff)));
        wanted.query.from = wanted.query.to = at;
        return;
    }
    }
}

Filter Evaluator::equality(Term property, const Value& value) {
    return {.op = Filter::Operator::Equal, .property = property, .value = contents(value)};
}

Filter Evaluator::makeFilter(const FilterTemplate& from) {
    Filter filter{.op = from.op, .property = from.property, .considersCase = m_considersCase};
    for (const FilterTemplate& operand : from.operands)
        filter.operands.push_back(makeFilter(operand));
    if (from.operands.empty())
        filter.value = from.value ? contents(evaluate(*from.value)) : Value::boolean(true);
    return filter;
}

Value Evaluator::evaluateCount(const CountExpression& count) {
    if (count.operand->kind == ExpressionKind::Element) {
        const auto& element = static_cast<const ElementExpression&>(*count.operand);
        if (element.isMany()) {
            const ElementQuery wanted = makeQuery(element);
            try {
                if (element.condition && !element.filter)
                    return Value::integer(static_cast<qint64>(findByTrying(element, wanted).size()));
                return Value::integer(wanted.container->count(wanted.forApplication()));
            } catch (const Error& error) {
                rethrow(error, count.range, "Can’t get %1.");
            }
        }
    }
    if (count.operand->kind == ExpressionKind::Piece) {
        const auto& piece = static_cast<const PieceExpression&>(*count.operand);
        if (piece.selection.form == SelectionForm::Every)
            return Value::integer(countPieces(wholeOf(piece), piece.piece, m_delimiters));
    }
    return Value::integer(countPieces(containerOf(count.operand), PieceClass::Item, m_delimiters));
}

} // namespace tarnwick::script
