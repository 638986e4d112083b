#include "script/run/Evaluator.h"
#include "script/run/Operators.h"
#include "script/values/Classes.h"
#include "script/values/Coercion.h"
#include "script/values/Snapshot.h"

namespace tarnwick::script {

void Evaluator::executeAssignment(const AssignmentStatement& statement) {
    Value value = evaluate(*statement.value);
    if (value.isNothing())
        throw Error{
            errors::NotDefined,
            QStringLiteral("No result was returned from “%1”.").arg(textOfPlace(statement.value->range)),
            statement.value->range};
    if (statement.kind == StatementKind::Copy)
        value = deepCopy(contents(value));
    if (statement.keepsResult)
        m_result = value;
    if (statement.target->kind == ExpressionKind::Variable) [[likely]] {
        variable(static_cast<const VariableExpression&>(*statement.target)) = std::move(value);
        return;
    }
    if (statement.target->kind == ExpressionKind::Piece) {
        // What was there goes only after the list is whole again: `value` dies at the end of the function.
        const auto& piece = static_cast<const PieceExpression&>(*statement.target);
        if (Value* place = follow(piece.path)) {
            value.swap(*place);
            return;
        }
    }
    assign(*statement.target, std::move(value));
}

void Evaluator::assign(const Expression& target, Value value) {
    switch (target.kind) {
    case ExpressionKind::Variable:
        variable(static_cast<const VariableExpression&>(target)) = std::move(value);
        return;
    case ExpressionKind::Piece:
        assignPiece(static_cast<const PieceExpression&>(target), std::move(value));
        return;
    case ExpressionKind::BuiltinProperty:
        assignBuiltin(static_cast<const BuiltinPropertyExpression&>(target), std::move(value));
        return;
    case ExpressionKind::TermProperty:
        assignTerm(static_cast<const TermPropertyExpression&>(target), value);
        return;
    case ExpressionKind::List:
        assignEach(static_cast<const ListExpression&>(target), value);
        return;
    case ExpressionKind::OwnedList: {
        const auto& owned = static_cast<const OwnedListExpression&>(target);
        withOwner(owned, [&] { assignEach(*owned.list, value); });
        return;
    }
    case ExpressionKind::Field: {
        const auto& field = static_cast<const FieldExpression&>(target);
        const Value container = containerOf(field.container);
        if (container.is(Kind::Constant) && container.asTerm() == classes::Script) {
            if (Value* place = scriptVariable(field.name)) {
                *place = std::move(value);
                return;
            }
        }
        if (container.is(Kind::Record)) {
            if (Value* place = recordIn(container).find(field.name)) {
                *place = std::move(value);
                return;
            }
        }
        break;
    }
    default:
        break;
    }
    throw Error{errors::NotSettable,
                QStringLiteral("Can’t set %1 to %2.").arg(textOfPlace(target.range), briefLiteral(value)),
                target.range};
}

void Evaluator::assignPiece(const PieceExpression& target, Value value) {
    Value scratch;
    if (target.isItem()) {
        const qint64 index = evaluateIndex(*target.selection.first);
        const Value& container =
            contents(*(target.container ? locate(*target.container, scratch) : &m_target));
        if (container.is(Kind::List)) {
            std::vector<Value>& items = listIn(container).items;
            const auto size = static_cast<qint64>(items.size());
            const qint64 at = index < 0 ? size + index : index - 1;
            if (at < 0 || at >= size)
                throw Error{errors::BadIndex,
                            QStringLiteral("Can’t set %1. Invalid index.").arg(textOfPlace(target.range)),
                            target.range};
            // What was there goes only after the list is whole again.
            value.swap(items[static_cast<std::size_t>(at)]);
            return;
        }
    }
    throw Error{errors::NotSettable,
                QStringLiteral("Can’t set %1 to %2.").arg(textOfPlace(target.range), briefLiteral(value)),
                target.range};
}

void Evaluator::assignBuiltin(const BuiltinPropertyExpression& target, Value value) {
    if (target.property == Builtin::TextItemDelimiters) {
        m_delimiters.clear();
        const Value& given = contents(value);
        if (given.is(Kind::List)) {
            for (const Value& each : given.asList())
                m_delimiters.append(requireText(each));
        } else {
            m_delimiters.append(given.isMissing() ? QString() : requireText(given));
        }
        return;
    }
    Value scratch;
    if (target.property == Builtin::Contents && target.container) {
        Value reference = evaluate(*target.container);
        if (reference.is(Kind::ItemReference)) {
            const ItemReferenceCell& cell = referenceIn(reference);
            std::vector<Value>& items = listIn(cell.list).items;
            if (cell.index < static_cast<qsizetype>(items.size())) {
                value.swap(items[static_cast<std::size_t>(cell.index)]);
                return;
            }
        } else if (target.container->kind == ExpressionKind::Variable) {
            assign(*target.container, std::move(value));
            return;
        }
    }
    if (target.property == Builtin::End || target.property == Builtin::Beginning) {
        const Value& list = contents(*(target.container ? locate(*target.container, scratch) : &m_target));
        if (list.is(Kind::List)) {
            if (target.property == Builtin::End)
                listIn(list).append(std::move(value));
            else
                listIn(list).prepend(std::move(value));
            return;
        }
    }
    throw Error{errors::NotSettable,
                QStringLiteral("Can’t set %1 to %2.").arg(textOfPlace(target.range), briefLiteral(value)),
                target.range};
}

void Evaluator::assignTerm(const TermPropertyExpression& target, const Value& value) {
    const Value container = containerOf(target.container);
    if (container.is(Kind::Record)) {
        recordIn(container).set(target.name, value);
        return;
    }
    if (!container.is(Kind::Object))
        throw Error{errors::NotSettable,
                    QStringLiteral("Can’t set %1 to %2.").arg(textOfPlace(target.range), briefLiteral(value)),
                    target.range};
    try {
        container.asObject()->setProperty(target.term, contents(value));
    } catch (const Error& error) {
        rethrow(error, target.range, "Can’t set %1.");
    }
}

void Evaluator::assignEach(const ListExpression& targets, const Value& given) {
    const Value value = contents(given);
    if (!value.is(Kind::List) || value.asList().size() < targets.items.size())
        throw Error{errors::NoSuchObject,
                    QStringLiteral("Can’t get item %1 of %2.")
                        .arg(QString::number(targets.items.size()), briefLiteral(value)),
                    targets.range};
    // Copied first: {a, b} may be set to {b, a}, and an assignment may change the list itself.
    const std::vector<Value> items(value.asList().begin(), value.asList().end());
    for (std::size_t i = 0; i < targets.items.size(); ++i)
        assign(*targets.items[i], items[i]);
}

} // namespace tarnwick::script
