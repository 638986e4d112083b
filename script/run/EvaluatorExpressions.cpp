#include "script/run/Evaluator.h"
#include "script/run/Operators.h"
#include "script/values/Classes.h"
#include "script/values/Coercion.h"
#include "script/values/Compare.h"
#include "script/values/Printer.h"
#include "script/values/Snapshot.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::script {

Value& Evaluator::variable(const VariableExpression& variable) {
    const auto slot = static_cast<std::size_t>(variable.slot);
    return variable.isGlobal ? m_globals[slot] : m_slots[slot];
}

const Value& Evaluator::definedVariable(const VariableExpression& named) {
    const Value& value = variable(named);
    if (value.isNothing()) [[unlikely]]
        throw Error{errors::NotDefined, QStringLiteral("The variable %1 is not defined.").arg(named.name),
                    named.range};
    return value;
}

/// Null when there is no way, or when anything is not as simple as it mostly is: then the long way tells why.
Value* Evaluator::follow(const ItemPath& path) const {
    if (path.slot < 0)
        return nullptr;
    Value* place = &m_slots[path.slot];
    for (const ItemStep& step : path.steps) {
        qint64 index = step.constant;
        if (step.slot >= 0) {
            if (!m_slots[step.slot].is(Kind::Integer))
                return nullptr;
            index = m_slots[step.slot].asInteger();
        }
        if (!place->is(Kind::List))
            return nullptr;
        std::vector<Value>& items = listIn(*place).items;
        const quint64 position = static_cast<quint64>(index) - 1;
        if (position >= items.size())
            return nullptr;
        place = &items[position];
    }
    return place;
}

const Value* Evaluator::locate(const Expression& expression, Value& scratch) {
    if (expression.kind == ExpressionKind::Variable)
        return &definedVariable(static_cast<const VariableExpression&>(expression));
    if (expression.kind == ExpressionKind::Piece) {
        const auto& piece = static_cast<const PieceExpression&>(expression);
        if (const Value* found = follow(piece.path))
            return found;
        if (piece.isItem())
            return locatePiece(piece, scratch);
    }
    scratch = evaluate(expression);
    return &scratch;
}

/// A number that says which item; most are a literal or a variable.
qint64 Evaluator::evaluateIndex(const Expression& expression) {
    if (expression.kind == ExpressionKind::Literal) {
        const Value& literal = static_cast<const LiteralExpression&>(expression).value;
        if (literal.is(Kind::Integer)) [[likely]]
            return literal.asInteger();
    } else if (expression.kind == ExpressionKind::Variable) {
        const Value& value = variable(static_cast<const VariableExpression&>(expression));
        if (value.is(Kind::Integer)) [[likely]]
            return value.asInteger();
    }
    const Value value = evaluate(expression);
    try {
        return requireInteger(value);
    } catch (Error& error) {
        error.range = expression.range;
        throw;
    }
}

/// `item i of …`. The index comes first: nothing may be evaluated between finding the list and reading it.
const Value* Evaluator::locatePiece(const PieceExpression& piece, Value& scratch) {
    const qint64 index = evaluateIndex(*piece.selection.first);
    const Value& whole = contents(*(piece.container ? locate(*piece.container, scratch) : &m_target));
    if (whole.is(Kind::List)) [[likely]] {
        const std::vector<Value>& items = listIn(whole).items;
        const auto size = static_cast<qint64>(items.size());
        const qint64 at = index < 0 ? size + index : index - 1;
        if (at >= 0 && at < size) [[likely]]
            return &items[static_cast<std::size_t>(at)];
    }
    scratch = pieceOutsideOfList(whole, index, piece);
    return &scratch;
}

Value Evaluator::evaluate(const Expression& expression) {
    switch (expression.kind) {
    case ExpressionKind::Literal:
        return static_cast<const LiteralExpression&>(expression).value;
    case ExpressionKind::Variable:
        return definedVariable(static_cast<const VariableExpression&>(expression));
    case ExpressionKind::Piece:
        if (const Value* found = follow(static_cast<const PieceExpression&>(expression).path))
            return *found;
        return evaluateOther(expression);
    case ExpressionKind::Binary:
        return evaluateBinary(static_cast<const BinaryExpression&>(expression));
    default:
        return evaluateOther(expression);
    }
}

Value Evaluator::evaluateBinary(const BinaryExpression& binary) {
    const Value left = evaluate(*binary.left);
    const Value right = evaluate(*binary.right);
    try {
        if (binary.op == BinaryOperator::Concatenate)
            return concatenate(left, right, m_delimiters.value(0));
        return calculate(binary.op, left, right);
    } catch (Error& error) {
        error.range = binary.range;
        throw;
    }
}

/// What is not on the way of a tight loop. An error without a place is the expression's.
Value Evaluator::evaluateOther(const Expression& expression) {
    try {
        checkStack();
        return evaluateByKind(expression);
    } catch (Error& error) {
        if (error.range.line == 0)
            error.range = expression.range;
        throw;
    }
}

Value Evaluator::evaluateByKind(const Expression& expression) {
    switch (expression.kind) {
    case ExpressionKind::Piece:
        return evaluatePiece(static_cast<const PieceExpression&>(expression));
    case ExpressionKind::Comparison:
    case ExpressionKind::Logical:
    case ExpressionKind::Not:
    case ExpressionKind::Exists:
        return Value::boolean(evaluateCondition(expression));
    case ExpressionKind::Negate:
        return negate(evaluate(*static_cast<const UnaryExpression&>(expression).operand));
    case ExpressionKind::List:
        return evaluateList(static_cast<const ListExpression&>(expression));
    case ExpressionKind::Record:
        return evaluateRecord(static_cast<const RecordExpression&>(expression));
    case ExpressionKind::Coercion:
        return evaluateCoercion(static_cast<const CoercionExpression&>(expression));
    case ExpressionKind::TermProperty:
        return evaluateTermProperty(static_cast<const TermPropertyExpression&>(expression));
    case ExpressionKind::BuiltinProperty:
        return evaluateBuiltin(static_cast<const BuiltinPropertyExpression&>(expression));
    case ExpressionKind::Field:
        return evaluateField(static_cast<const FieldExpression&>(expression));
    case ExpressionKind::Element:
        return evaluateElement(static_cast<const ElementExpression&>(expression));
    case ExpressionKind::Count:
        return evaluateCount(static_cast<const CountExpression&>(expression));
    case ExpressionKind::Call:
        return evaluateCall(static_cast<const CallExpression&>(expression));
    case ExpressionKind::Command:
        return evaluateCommand(static_cast<const CommandExpression&>(expression));
    case ExpressionKind::StandardCommand:
        return evaluateStandardCommand(static_cast<const StandardCommandExpression&>(expression));
    case ExpressionKind::ApplicationNamed:
        return applicationNamed(
            requireText(evaluate(*static_cast<const ApplicationExpression&>(expression).name)),
            expression.range);
    case ExpressionKind::FileNamed:
        return Value::alias(
            posixPath(requireText(evaluate(*static_cast<const FileExpression&>(expression).path))));
    case ExpressionKind::OwnedList:
        return evaluateOwnedList(static_cast<const OwnedListExpression&>(expression));
    case ExpressionKind::Owner:
        return m_owner;
    case ExpressionKind::ReferenceTo:
        return evaluateReferenceTo(static_cast<const ReferenceToExpression&>(expression));
    case ExpressionKind::Round:
        return evaluateRound(static_cast<const RoundExpression&>(expression));
    case ExpressionKind::Offset:
        return evaluateOffset(static_cast<const OffsetExpression&>(expression));
    case ExpressionKind::Target:
        return m_target;
    case ExpressionKind::Script:
        return m_script;
    case ExpressionKind::Result:
        if (m_result.isNothing())
            throw Error{errors::NotDefined, QStringLiteral("The variable result is not defined."),
                        expression.range};
        return m_result;
    default:
        return {};
    }
}

bool Evaluator::evaluateCondition(const Expression& expression) {
    switch (expression.kind) {
    case ExpressionKind::Comparison:
        return compare(static_cast<const ComparisonExpression&>(expression));
    case ExpressionKind::Logical: {
        const auto& logical = static_cast<const LogicalExpression&>(expression);
        return evaluateCondition(*logical.left) == logical.isAnd ? evaluateCondition(*logical.right)
                                                                 : !logical.isAnd;
    }
    case ExpressionKind::Not:
        return !evaluateCondition(*static_cast<const UnaryExpression&>(expression).operand);
    case ExpressionKind::Exists:
        return evaluateExists(static_cast<const ExistsExpression&>(expression));
    default:
        break;
    }
    const Value value = evaluate(expression);
    if (value.is(Kind::Boolean)) [[likely]]
        return value.asBoolean();
    try {
        return requireBoolean(value);
    } catch (Error& error) {
        error.range = expression.range;
        throw;
    }
}

bool Evaluator::compare(const ComparisonExpression& comparison) {
    Value leftScratch;
    const Value* left = locate(*comparison.left, leftScratch);
    if (!left->is(Kind::Integer))
        return compareValues(comparison, *left);
    const qint64 a = left->asInteger();
    Value rightScratch;
    const Value* right = locate(*comparison.right, rightScratch);
    if (!right->is(Kind::Integer))
        return holds(comparison, Value::integer(a), *right);
    const qint64 b = right->asInteger();
    switch (comparison.op) {
    case Filter::Operator::Equal:
        return (a == b) != comparison.negated;
    case Filter::Operator::Less:
        return (a < b) != comparison.negated;
    case Filter::Operator::LessOrEqual:
        return (a <= b) != comparison.negated;
    case Filter::Operator::Greater:
        return (a > b) != comparison.negated;
    case Filter::Operator::GreaterOrEqual:
        return (a >= b) != comparison.negated;
    default:
        return holds(comparison, Value::integer(a), Value::integer(b));
    }
}

/// `left` is a copy: it may stand in a list that the right side changes.
bool Evaluator::compareValues(const ComparisonExpression& comparison, Value left) {
    return holds(comparison, left, evaluate(*comparison.right));
}

bool Evaluator::holds(const ComparisonExpression& comparison, const Value& left, const Value& right) const {
    const Filter leaf{.op = comparison.op, .value = right, .considersCase = m_considersCase};
    try {
        return leaf.holdsFor(left) != comparison.negated;
    } catch (Error& error) {
        if (error.range.line == 0)
            error.range = comparison.range;
        throw;
    }
}

Value Evaluator::evaluateList(const ListExpression& expression) {
    Value list = Value::list();
    for (const Expression* item : expression.items) {
        Value value = evaluate(*item);
        if (value.isNothing())
            throw Error{errors::NotDefined,
                        QStringLiteral("No result was returned from “%1”.").arg(textOfPlace(item->range)),
                        item->range};
        listIn(list).append(std::move(value));
    }
    return list;
}

Value Evaluator::evaluateRecord(const RecordExpression& expression) {
    Value record = Value::record();
    for (const auto& [key, field] : expression.fields)
        recordIn(record).set(key, evaluate(*field));
    return record;
}

Value Evaluator::evaluateCoercion(const CoercionExpression& coercion) {
    return coerce(evaluate(*coercion.operand), coercion.type, m_delimiters.value(0));
}

bool Evaluator::evaluateExists(const ExistsExpression& exists) {
    try {
        return !contents(evaluate(*exists.operand)).isNothing();
    } catch (const Error& error) {
        if (error.number != errors::NoSuchObject && error.number != errors::BadIndex &&
            error.number != errors::NotDefined)
            throw;
        return false;
    }
}

} // namespace tarnwick::script
