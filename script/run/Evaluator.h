#pragma once

#include "script/run/Host.h"
#include "script/run/Interpreter.h"
#include "script/syntax/SyntaxTree.h"
#include "script/values/Application.h"
#include "script/values/Cells.h"

#include <QHash>
#include <QStringList>

#include <chrono>

namespace tarnwick::script {

/// Runs one program once, by walking its tree. Lives on the stack of the thread that runs it, inside of a
/// `Heap`.
///
/// `Evaluator.cpp` has the statements and the limits, `EvaluatorAssignment.cpp` `set` and `copy`,
/// `EvaluatorExpressions.cpp` values and operators, `EvaluatorCalls.cpp` handlers and commands,
/// `EvaluatorReferences.cpp` what stands before an `of`, `EvaluatorElements.cpp` the objects of an
/// application.
class Evaluator {
public:
    /// Everything given must outlive the evaluator.
    Evaluator(const Program& program, ApplicationProvider& applications, Host& host, const Limits& limits);

    /// The script's reply. Throws `Error`, with its place.
    Descriptor run();

private:
    enum class Flow : quint8 { Next, Exit, Return };
    /// Thrown when the script has to end whatever its `on error` says.
    struct Abort {
        Error error;
    };
    /// The elements that a reference means, as the application is asked for them.
    struct ElementQuery {
        ObjectPointer container;
        Query query;
        Filter filter;
        bool hasFilter = false;

        /// Lives as long as this one stays where it is.
        Query forApplication() const {
            Query asked = query;
            asked.filter = hasFilter ? &filter : nullptr;
            return asked;
        }
    };
    class CallFrame;

    // Statements
    Value runToReply();
    SourceRange placeOfReply() const;
    Flow execute(const Block& block);
    Flow execute(const Statement& statement);
    Flow executeIf(const IfStatement& statement);
    Flow executeTell(const TellStatement& statement);
    Flow executeTry(const TryStatement& statement);
    Flow executeConsidering(const ConsideringStatement& statement);
    Flow executeForever(const RepeatStatement& statement);
    Flow executeTimes(const RepeatStatement& statement);
    Flow executeWhile(const RepeatStatement& statement);
    Flow executeCounting(const RepeatStatement& statement);
    Flow executeIn(const RepeatStatement& statement);
    [[noreturn]] void executeError(const ErrorStatement& statement);
    void executeAssignment(const AssignmentStatement& statement);
    void assign(const Expression& target, Value value);
    void assignPiece(const PieceExpression& target, Value value);
    void assignBuiltin(const BuiltinPropertyExpression& target, Value value);
    void assignTerm(const TermPropertyExpression& target, const Value& value);
    void assignEach(const ListExpression& targets, const Value& value);

    // Limits
    void tick() {
        if ((++m_ticks & 0xff) == 0) [[unlikely]]
            checkLimits();
    }
    void checkLimits() const;
    void checkStack() const;

    // Expressions
    Value evaluate(const Expression& expression);
    /// Where the value stands, without a copy: in a variable, in a list, or else in `scratch`. Good until the
    /// next evaluation.
    const Value* locate(const Expression& expression, Value& scratch);
    Value* follow(const ItemPath& path) const;
    const Value* locatePiece(const PieceExpression& piece, Value& scratch);
    Value& variable(const VariableExpression& variable);
    const Value& definedVariable(const VariableExpression& variable);
    bool evaluateCondition(const Expression& expression);
    bool compare(const ComparisonExpression& comparison);
    bool compareValues(const ComparisonExpression& comparison, Value left);
    bool holds(const ComparisonExpression& comparison, const Value& left, const Value& right) const;
    Value evaluateBinary(const BinaryExpression& binary);
    Value evaluateOther(const Expression& expression);
    Value evaluateByKind(const Expression& expression);
    qint64 evaluateIndex(const Expression& expression);
    Value evaluateList(const ListExpression& list);
    Value evaluateOwnedList(const OwnedListExpression& owned);
    template <typename Work>
    void withOwner(const OwnedListExpression& owned, Work work);
    Value evaluateRecord(const RecordExpression& record);
    Value evaluateCoercion(const CoercionExpression& coercion);
    Value evaluateCall(const CallExpression& call);
    Value callHandler(const Handler& handler, std::vector<Value> arguments, const SourceRange& range);
    Value evaluateReferenceTo(const ReferenceToExpression& reference);
    Value evaluateRound(const RoundExpression& round);
    Value evaluateOffset(const OffsetExpression& offset);
    Value evaluateStandardCommand(const StandardCommandExpression& command);
    void delay(double seconds);
    bool evaluateExists(const ExistsExpression& exists);

    // References
    Value evaluateTermProperty(const TermPropertyExpression& property);
    Value propertyOf(const Value& container, const TermPropertyExpression& property);
    Value evaluateBuiltin(const BuiltinPropertyExpression& property);
    /// A variable of the script itself, `my x`; null when it has none of that name.
    Value* scriptVariable(const QString& name);
    Value evaluateField(const FieldExpression& field);
    Value wholeOf(const PieceExpression& piece);
    Value evaluatePiece(const PieceExpression& piece);
    Value pieceOutsideOfList(const Value& whole, qint64 index, const PieceExpression& piece);
    Value evaluateElement(const ElementExpression& element);
    std::vector<ObjectPointer> findElements(const ElementExpression& element, const ElementQuery& wanted);
    std::vector<ObjectPointer> findByTrying(const ElementExpression& element, const ElementQuery& wanted);
    ElementQuery makeQuery(const ElementExpression& element);
    void select(ElementQuery& query, const Selection& selection, const SourceRange& range);
    Filter makeFilter(const FilterTemplate& from);
    static Filter equality(Term property, const Value& value);
    Value evaluateCount(const CountExpression& count);
    Value evaluateCommand(const CommandExpression& command);
    Value applicationNamed(const QString& name, const SourceRange& range);
    Value containerOf(const Expression* container);
    QString className(Term code) const;

    // Errors
    QString textOfPlace(const SourceRange& range) const;
    [[noreturn]] void throwCannotGet(const SourceRange& range) const;
    /// Words and places an error that an application has thrown.
    [[noreturn]] void rethrow(Error error, const SourceRange& range, const char* what) const;

    const Program& m_program;
    ApplicationProvider& m_applications;
    Host& m_host;
    const Limits& m_limits;

    std::vector<Value> m_globals;
    Value* m_slots = nullptr; ///< the variables of the running handler
    Value* m_mainSlots = nullptr;
    Value m_owner;  ///< of the items of a list before an `of`
    Value m_target; ///< `it`
    Value m_script; ///< `me`
    std::shared_ptr<Application> m_application;
    QHash<QString, std::shared_ptr<Application>> m_opened;
    Value m_result;
    Value m_returned;
    const Statement* m_returnedBy = nullptr;
    QStringList m_delimiters{QString()};
    bool m_considersCase = false;
    bool m_ignoresResponses = false;

    quint32 m_ticks = 0;
    int m_calls = 0;
    const char* m_stackEnd = nullptr;
    std::chrono::steady_clock::time_point m_deadline;
};

/// Does `work` while the items of the list hang on their owner.
template <typename Work>
void Evaluator::withOwner(const OwnedListExpression& owned, Work work) {
    if (!owned.owner) {
        work();
        return;
    }
    Value outer = containerOf(owned.container);
    outer.swap(m_owner);
    try {
        work();
        outer.swap(m_owner);
    } catch (...) {
        outer.swap(m_owner);
        throw;
    }
}

} // namespace tarnwick::script
