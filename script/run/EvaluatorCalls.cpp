#include "script/run/Evaluator.h"
#include "script/run/Operators.h"
#include "script/run/Pieces.h"
#include "script/values/Classes.h"
#include "script/values/Coercion.h"
#include "script/values/ComposedText.h"
#include "script/values/Printer.h"
#include "script/values/Snapshot.h"

#include <algorithm>
#include <utility>

namespace tarnwick::script {

/// What a handler changes and its caller gets back.
class Evaluator::CallFrame {
public:
    CallFrame(Evaluator& evaluator, Value* slots_)
        : m_evaluator(evaluator), m_slots(std::exchange(evaluator.m_slots, slots_)),
          m_target(std::move(evaluator.m_target)), m_application(std::move(evaluator.m_application)) {
        ++evaluator.m_calls;
        evaluator.m_target = evaluator.m_script;
        evaluator.m_application = nullptr;
    }
    CallFrame(const CallFrame&) = delete;
    CallFrame& operator=(const CallFrame&) = delete;
    ~CallFrame() {
        --m_evaluator.m_calls;
        m_evaluator.m_slots = m_slots;
        m_evaluator.m_target = std::move(m_target);
        m_evaluator.m_application = std::move(m_application);
    }

private:
    Evaluator& m_evaluator;
    Value* m_slots;
    Value m_target;
    std::shared_ptr<Application> m_application;
};

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
    const CallFrame frame(*this, slots_.data());
    Value outer = std::exchange(m_result, {});
    const Flow flow = execute(handler.body);
    Value reply = flow == Flow::Return ? std::move(m_returned) : std::move(m_result);
    m_result = std::move(outer);
    return reply;
}

Value Evaluator::evaluateRound(const RoundExpression& round) {
    const Value value = contents(evaluate(*round.operand));
    if (value.is(Kind::Integer))
        return value;
    return rounded(requireReal(value), round.rounding);
}

Value Evaluator::evaluateOffset(const OffsetExpression& offset) {
    const QString part = requireText(evaluate(*offset.part));
    const Value whole = contents(evaluate(*offset.whole));
    if (whole.is(Kind::List))
        throwCannotMake(whole, QLatin1String("text"));
    const QString text = requireText(whole);
    const ComposedText composed(text, m_considersCase);
    const qsizetype found = part.isEmpty() ? -1 : composed.indexOf({part, m_considersCase});
    if (found < 0)
        return Value::integer(0);
    const Value before = Value::text(text.left(composed.original(found)));
    return Value::integer(countPieces(before, PieceClass::Character, {}) + 1);
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

Value Evaluator::evaluateCommand(const CommandExpression& command) {
    if (!m_application)
        throw Error{errors::NotUnderstood,
                    QStringLiteral("«script» doesn’t understand the “%1” message.").arg(command.name),
                    command.range};
    Application::Parameters parameters;
    for (const auto& [code, parameter] : command.parameters)
        parameters.emplace_back(code, contents(evaluate(*parameter)));
    Value direct = command.direct ? contents(evaluate(*command.direct)) : Value();
    if (!command.direct && m_target.is(Kind::Object) && m_target.asObject() != m_application)
        direct = m_target;
    try {
        Value reply = m_application->perform(command.command, direct, parameters);
        return m_ignoresResponses ? Value() : reply;
    } catch (const Error& error) {
        if (m_ignoresResponses)
            return {};
        if (error.number == errors::NotUnderstood)
            rethrow(error, command.range, "The application doesn’t understand “%1”.");
        if (error.number == errors::NoSuchObject && command.direct)
            rethrow(error, command.direct->range, "Can’t get %1.");
        rethrow(error, command.range, "Can’t %1.");
    }
}

Value Evaluator::applicationNamed(const QString& name, const SourceRange& range) {
    const QString key = name.toLower();
    auto opened = m_opened.find(key);
    if (opened == m_opened.end()) {
        std::shared_ptr<Application> application = m_applications.application(name);
        if (!application)
            throw Error{errors::NoSuchObject, QStringLiteral("Can’t get application \"%1\".").arg(name),
                        range};
        opened = m_opened.insert(key, application);
    }
    return Value::object(*opened);
}

} // namespace tarnwick::script
