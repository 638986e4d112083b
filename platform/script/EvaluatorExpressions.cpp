#include "platform/script/Classes.h"
#include "platform/script/Coercion.h"
#include "platform/script/Compare.h"
#include "platform/script/Evaluator.h"
#include "platform/script/Operators.h"
#include "platform/script/Printer.h"
#include "platform/script/Snapshot.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::script {

/// What a handler changes and its caller gets back.
class Evaluator::CallFrame {
public:
    CallFrame(Evaluator& evaluator, Value* slots_, const Handler& handler)
        : m_evaluator(evaluator), m_slots(std::exchange(evaluator.m_slots, slots_)),
          m_handler(std::exchange(evaluator.m_handler, &handler)), m_target(std::move(evaluator.m_target)),
          m_application(std::move(evaluator.m_application)) {
        ++evaluator.m_calls;
        evaluator.m_target = evaluator.m_script;
        evaluator.m_application = nullptr;
    }
    CallFrame(const CallFrame&) = delete;
    CallFrame& operator=(const CallFrame&) = delete;
    ~CallFrame() {
        --m_evaluator.m_calls;
        m_evaluator.m_slots = m_slots;
        m_evaluator.m_handler = m_handler;
        m_evaluator.m_target = std::move(m_target);
        m_evaluator.m_application = std::move(m_application);
    }

private:
    Evaluator& m_evaluator;
    Value* m_slots;
    const Handler* m_handler;
    Value m_target;
    std::shared_ptr<Application> m_application;
};

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
    return requireInteger(evaluate(expression));
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
        return evaluatePiece(static_cast<const PieceExpression&>(expression));
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

/// What is not on the way of a tight loop.
Value Evaluator::evaluateOther(const Expression& expression) {
    checkStack();
    switch (expression.kind) {
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
    return value.is(Kind::Boolean) ? value.asBoolean() : requireBoolean(value);
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
    return leaf.holdsFor(left) != comparison.negated;
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
    const Value value = evaluate(*coercion.operand);
    try {
        return coerce(value, coercion.type, m_delimiters.value(0));
    } catch (Error& error) {
        if (error.range.line == 0)
            error.range = coercion.range;
        throw;
    }
}

Value Evaluator::evaluateCall(const CallExpression& call) {
    std::vector<Value> arguments;
    arguments.reserve(call.arguments.size());
    for (const Expression* argument : call.arguments)
        arguments.push_back(evaluate(*argument));
    const Value receiver = containerOf(call.receiver);
    const bool isOurs = receiver.is(Kind::Constant) && receiver.asTerm() == classes::Script;
    if (!isOurs || !call.handler) {
        // A call inside of `tell application` without `my` goes to the application, which does not know it.
        const QString who = isOurs ? QStringLiteral("«script»") : briefLiteral(receiver);
        rethrow({errors::NotUnderstood,
                 QStringLiteral("%1 doesn’t understand the “%2” message.").arg(who, call.name)},
                call.range, "");
    }
    return callHandler(*call.handler, std::move(arguments), call.range);
}

Value Evaluator::callHandler(const Handler& handler, std::vector<Value> arguments, const SourceRange& range) {
    tick();
    checkStack();
    if (m_calls >= m_limits.callDepth)
        throw Error{errors::StackOverflow, QStringLiteral("Stack overflow."), range};
    if (arguments.size() != handler.parameters.size())
        throw Error{
            -1721,
            QStringLiteral("%1 doesn’t match the parameters of %2.").arg(textOfPlace(range), handler.name),
            range};
    std::vector<Value> slots_(handler.slotNames.size());
    for (std::size_t i = 0; i < arguments.size(); ++i)
        slots_[static_cast<std::size_t>(handler.parameters[i])] = std::move(arguments[i]);
    const CallFrame frame(*this, slots_.data(), handler);
    Value outer = std::exchange(m_result, {});
    const Flow flow = execute(handler.body);
    Value reply = flow == Flow::Return ? std::move(m_returned) : std::move(m_result);
    m_result = std::move(outer);
    return reply;
}

Value Evaluator::evaluateStandardCommand(const StandardCommandExpression& command) {
    Value direct = command.direct ? contents(evaluate(*command.direct)) : Value();
    switch (command.command) {
    case StandardCommand::Log:
        m_host.log(direct.is(Kind::Text) ? direct.asText() : literal(snapshot(direct)));
        return {};
    case StandardCommand::Delay:
        delay(command.direct ? requireReal(direct) : 0.0);
        return {};
    case StandardCommand::DisplayDialog:
        break;
    }
    m_host.displayDialog(requireText(direct));
    Value reply = Value::record();
    recordIn(reply).set(QStringLiteral("button returned"), Value::text(QStringLiteral("OK")));
    if (command.defaultAnswer)
        recordIn(reply).set(QStringLiteral("text returned"),
                            Value::text(requireText(evaluate(*command.defaultAnswer))));
    return reply;
}

void Evaluator::delay(double seconds) {
    using std::chrono::nanoseconds;
    checkLimits();
    // As long as the clock can count; a script that says more means for ever.
    constexpr double longest = 3.0e9;
    const nanoseconds wanted(static_cast<qint64>(std::clamp(seconds, 0.0, longest) * 1e9));
    if (!m_limits.runTime) {
        m_host.delay(wanted);
    } else {
        const nanoseconds left = m_deadline - std::chrono::steady_clock::now();
        m_host.delay(std::clamp(wanted, nanoseconds(0), std::max(left, nanoseconds(0))));
        if (wanted >= left)
            throw Abort{{errors::TimedOut, QStringLiteral("The script has run for too long.")}};
    }
    checkLimits();
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
