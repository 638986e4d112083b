#include "script/run/Evaluator.h"

#include "script/run/Operators.h"
#include "script/run/Pieces.h"
#include "script/values/Classes.h"
#include "script/values/Coercion.h"
#include "script/values/Snapshot.h"

#include <cmath>
#include <new>

namespace tarnwick::script {

namespace {

const char* stackPointer() { return static_cast<const char*>(__builtin_frame_address(0)); }

} // namespace

Evaluator::Evaluator(const Program& program, ApplicationProvider& applications, Host& host,
                     const Limits& limits)
    : m_program(program), m_applications(applications), m_host(host), m_limits(limits),
      m_globals(program.globalNames.size()),
      m_script(Value::constant(classes::Script, QStringLiteral("«script»"))),
      m_stackEnd(stackPointer() - limits.stackBytes) {
    if (limits.runTime)
        m_deadline = std::chrono::steady_clock::now() + *limits.runTime;
    m_target = m_script;
}

Descriptor Evaluator::run() {
    try {
        const Value reply = runToReply();
        try {
            return snapshot(reply);
        } catch (Error& error) {
            error.range = placeOfReply();
            throw;
        }
    } catch (const Abort& abort) {
        throw abort.error;
    }
}

Value Evaluator::runToReply() {
    std::vector<Value> slots_(m_program.main.slotNames.size());
    m_slots = m_mainSlots = slots_.data();
    for (const auto& [slot, initial] : m_program.properties)
        m_globals[static_cast<std::size_t>(slot)] = evaluate(*initial);
    if (execute(m_program.main.body) == Flow::Return)
        return std::move(m_returned);
    m_returnedBy = nullptr;
    return std::move(m_result);
}

/// The `return`; without one the last statement, which the result came from.
SourceRange Evaluator::placeOfReply() const {
    return (m_returnedBy ? m_returnedBy : m_program.main.body.back())->range;
}

// Limits

void Evaluator::checkLimits() const {
    if (m_limits.cancelled && m_limits.cancelled->load(std::memory_order_relaxed))
        throw Abort{{errors::UserCancelled, QStringLiteral("User canceled.")}};
    if (m_limits.runTime && std::chrono::steady_clock::now() >= m_deadline)
        throw Abort{{errors::TimedOut, QStringLiteral("The script has run for too long.")}};
}

void Evaluator::checkStack() const {
    if (stackPointer() < m_stackEnd) [[unlikely]]
        throw Error{errors::StackOverflow, QStringLiteral("Stack overflow.")};
}

// Statements

Evaluator::Flow Evaluator::execute(const Block& block) {
    const Statement* current = nullptr;
    try {
        for (const Statement* statement : block) {
            current = statement;
            const Flow flow = execute(*statement);
            if (flow != Flow::Next)
                return flow;
        }
    } catch (Error& error) {
        if (error.range.line == 0)
            error.range = current->range;
        throw;
    } catch (Abort& abort) {
        if (abort.error.range.line == 0)
            abort.error.range = current->range;
        throw;
    } catch (const std::bad_alloc&) {
        throw Error{errors::OutOfMemory, QStringLiteral("Out of memory."), current->range};
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::execute(const Statement& statement) {
    switch (statement.kind) {
    case StatementKind::Set:
    case StatementKind::Copy:
        executeAssignment(static_cast<const AssignmentStatement&>(statement));
        return Flow::Next;
    case StatementKind::If:
        return executeIf(static_cast<const IfStatement&>(statement));
    case StatementKind::Expression: {
        Value value = evaluate(*static_cast<const ExpressionStatement&>(statement).expression);
        if (!value.isNothing())
            m_result = std::move(value);
        return Flow::Next;
    }
    case StatementKind::Repeat:
        return executeForever(static_cast<const RepeatStatement&>(statement));
    case StatementKind::RepeatTimes:
        return executeTimes(static_cast<const RepeatStatement&>(statement));
    case StatementKind::RepeatWhile:
        return executeWhile(static_cast<const RepeatStatement&>(statement));
    case StatementKind::RepeatCounting:
        return executeCounting(static_cast<const RepeatStatement&>(statement));
    case StatementKind::RepeatIn:
        return executeIn(static_cast<const RepeatStatement&>(statement));
    case StatementKind::Exit:
        return Flow::Exit;
    case StatementKind::Return: {
        const Expression* value = static_cast<const ReturnStatement&>(statement).value;
        m_returned = value ? evaluate(*value) : Value();
        m_returnedBy = &statement;
        return Flow::Return;
    }
    case StatementKind::Tell:
        return executeTell(static_cast<const TellStatement&>(statement));
    case StatementKind::Try:
        return executeTry(static_cast<const TryStatement&>(statement));
    case StatementKind::Error:
        executeError(static_cast<const ErrorStatement&>(statement));
    case StatementKind::Considering:
        return executeConsidering(static_cast<const ConsideringStatement&>(statement));
    case StatementKind::Group:
        return execute(static_cast<const GroupStatement&>(statement).body);
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::executeIf(const IfStatement& statement) {
    for (const auto& [condition, body] : statement.branches) {
        if (evaluateCondition(*condition))
            return execute(body);
    }
    return execute(statement.otherwise);
}

Evaluator::Flow Evaluator::executeTell(const TellStatement& statement) {
    Value target = contents(evaluate(*statement.target));
    std::shared_ptr<Application> application = m_application;
    if (target.is(Kind::Object)) {
        if (auto asked = std::dynamic_pointer_cast<Application>(target.asObject()))
            application = std::move(asked);
    } else if (target.is(Kind::Constant) && target.asTerm() == classes::Script) {
        application = nullptr;
    }
    target.swap(m_target);
    application.swap(m_application);
    const auto restore = [&] {
        target.swap(m_target);
        application.swap(m_application);
    };
    try {
        const Flow flow = execute(statement.body);
        restore();
        return flow;
    } catch (...) {
        restore();
        throw;
    }
}

Evaluator::Flow Evaluator::executeTry(const TryStatement& statement) {
    try {
        return execute(statement.body);
    } catch (const Error& error) {
        tick();
        if (statement.onlyNumber && requireInteger(evaluate(*statement.onlyNumber)) != error.number)
            throw;
        if (statement.message)
            variable(*statement.message) = Value::text(error.message);
        if (statement.number)
            variable(*statement.number) = Value::integer(error.number);
    }
    return execute(statement.onError);
}

Evaluator::Flow Evaluator::executeConsidering(const ConsideringStatement& statement) {
    const bool consideredCase = m_considersCase;
    const bool ignoredResponses = m_ignoresResponses;
    if (statement.changesCase)
        m_considersCase = statement.considersCase;
    if (statement.changesResponses)
        m_ignoresResponses = statement.ignoresResponses;
    const auto restore = [&] {
        m_considersCase = consideredCase;
        m_ignoresResponses = ignoredResponses;
    };
    try {
        const Flow flow = execute(statement.body);
        restore();
        return flow;
    } catch (...) {
        restore();
        throw;
    }
}

Evaluator::Flow Evaluator::executeForever(const RepeatStatement& statement) {
    for (;;) {
        tick();
        const Flow flow = execute(statement.body);
        if (flow != Flow::Next)
            return flow == Flow::Exit ? Flow::Next : flow;
    }
}

Evaluator::Flow Evaluator::executeTimes(const RepeatStatement& statement) {
    const qint64 times = requireInteger(evaluate(*statement.from));
    for (qint64 i = 0; i < times; ++i) {
        tick();
        const Flow flow = execute(statement.body);
        if (flow != Flow::Next)
            return flow == Flow::Exit ? Flow::Next : flow;
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::executeWhile(const RepeatStatement& statement) {
    while (evaluateCondition(*statement.from) != statement.until) {
        tick();
        const Flow flow = execute(statement.body);
        if (flow != Flow::Next)
            return flow == Flow::Exit ? Flow::Next : flow;
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::executeCounting(const RepeatStatement& statement) {
    const qint64 from = requireInteger(evaluate(*statement.from));
    const qint64 to = requireInteger(evaluate(*statement.to));
    const qint64 by = statement.by ? requireInteger(evaluate(*statement.by)) : 1;
    if (by == 0)
        throw Error{errors::General, QStringLiteral("Can’t repeat by 0.")};
    for (qint64 i = from; by > 0 ? i <= to : i >= to;) {
        tick();
        // Looked up each time: what the script does to the variable lasts until the next round.
        variable(*statement.variable) = Value::integer(i);
        const Flow flow = execute(statement.body);
        if (flow != Flow::Next)
            return flow == Flow::Exit ? Flow::Next : flow;
        if (__builtin_add_overflow(i, by, &i))
            break;
    }
    return Flow::Next;
}

Evaluator::Flow Evaluator::executeIn(const RepeatStatement& statement) {
    Value list = contents(evaluate(*statement.from));
    if (list.is(Kind::Text))
        list = piecesBetween(list, PieceClass::Character, 0, countPieces(list, PieceClass::Character, {}) - 1,
                             {});
    else if (!list.is(Kind::List))
        list = coerce(list, CoercionType::List, QString());
    const auto count = static_cast<qsizetype>(list.asList().size());
    for (qsizetype i = 0; i < count && i < static_cast<qsizetype>(list.asList().size()); ++i) {
        tick();
        variable(*statement.variable) = Value(new ItemReferenceCell(list, i));
        const Flow flow = execute(statement.body);
        if (flow != Flow::Next)
            return flow == Flow::Exit ? Flow::Next : flow;
    }
    return Flow::Next;
}

void Evaluator::executeError(const ErrorStatement& statement) {
    Error error{errors::General, QString(), statement.range};
    if (statement.message) {
        const Value value = evaluate(*statement.message);
        // `error -128` is a number without words.
        if (contents(value).is(Kind::Integer) && !statement.number)
            error.number = static_cast<int>(requireInteger(value));
        else
            error.message = requireText(value);
    }
    if (statement.number)
        error.number = static_cast<int>(requireInteger(evaluate(*statement.number)));
    if (error.message.isEmpty())
        error.message = error.number == errors::UserCancelled
                            ? QStringLiteral("User canceled.")
                            : QStringLiteral("An error of type %1 has occurred.").arg(error.number);
    throw error;
}

// Errors

QString Evaluator::textOfPlace(const SourceRange& range) const {
    const QString text = m_program.source.mid(range.offset, std::min(range.length, 400)).simplified();
    return text.size() > 200 ? text.left(200) + QChar(0x2026) : text;
}

void Evaluator::throwCannotGet(const SourceRange& range) const {
    throw Error{errors::NoSuchObject, QStringLiteral("Can’t get %1.").arg(textOfPlace(range)), range};
}

void Evaluator::rethrow(Error error, const SourceRange& range, const char* what) const {
    if (error.range.line != 0) // the script's own: a condition that was tried, an index
        throw error;
    if (error.message.isEmpty())
        error.message = error.number == errors::NotRunning ? Error::notRunning().message
                                                           : QString::fromUtf8(what).arg(textOfPlace(range));
    error.range = range;
    const QString prefix =
        m_application ? m_application->name() + QStringLiteral(" got an error: ") : QString();
    if (!error.message.startsWith(prefix))
        error.message.prepend(prefix);
    throw error;
}

} // namespace tarnwick::script
