#pragma once

#include "platform/script/Cells.h"
#include "platform/script/Error.h"
#include "platform/script/Filter.h"
#include "platform/script/Term.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace tarnwick::script {

class Terminology;

/// What every part of a compiled text has: its place, and how deep the tree below it is.
struct Node {
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    SourceRange range;
    int depth = 1;
};

enum class ExpressionKind : quint8 {
    Literal,
    Variable,
    List,
    Record,
    Not,
    Negate,
    Binary,
    Logical,
    Comparison,
    Coercion,
    TermProperty,
    BuiltinProperty,
    Field,
    Piece,
    Element,
    Count,
    Call,
    Command,
    StandardCommand,
    ApplicationNamed,
    FileNamed,
    Target,
    Script,
    Result,
    Exists,
};

struct Expression : Node {
    explicit Expression(ExpressionKind k) : kind(k) {}
    const ExpressionKind kind;
};

/// A number, a text, a constant. The cell belongs to the tree and is immortal, so that threads may share it.
struct LiteralExpression : Expression {
    LiteralExpression() : Expression(ExpressionKind::Literal) {}
    ~LiteralExpression() override;
    /// Takes `cell` over.
    void own(Cell* cell);
    Value value;

private:
    Cell* m_owned = nullptr;
};

struct VariableExpression : Expression {
    VariableExpression() : Expression(ExpressionKind::Variable) {}
    QString name;
    int slot = 0;
    bool isGlobal = false; ///< the slot is one of the script, not of the handler
};

struct ListExpression : Expression {
    ListExpression() : Expression(ExpressionKind::List) {}
    std::vector<Expression*> items;
};

struct RecordExpression : Expression {
    RecordExpression() : Expression(ExpressionKind::Record) {}
    std::vector<std::pair<QString, Expression*>> fields;
};

/// `not x` and `-x`.
struct UnaryExpression : Expression {
    using Expression::Expression;
    Expression* operand = nullptr;
};

enum class BinaryOperator : quint8 {
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Power,
    Concatenate
};

struct BinaryExpression : Expression {
    BinaryExpression() : Expression(ExpressionKind::Binary) {}
    BinaryOperator op = {};
    Expression* left = nullptr;
    Expression* right = nullptr;
};

/// `and` and `or`.
struct LogicalExpression : Expression {
    LogicalExpression() : Expression(ExpressionKind::Logical) {}
    bool isAnd = false;
    Expression* left = nullptr;
    Expression* right = nullptr;
};

/// Also `contains`, `starts with`, `is in` and their like; `negated` turns the answer round.
struct ComparisonExpression : Expression {
    ComparisonExpression() : Expression(ExpressionKind::Comparison) {}
    Filter::Operator op = {};
    bool negated = false;
    Expression* left = nullptr;
    Expression* right = nullptr;
};

enum class CoercionType : quint8 { Text, Integer, Real, Number, Boolean, List, Record, Alias };

struct CoercionExpression : Expression {
    CoercionExpression() : Expression(ExpressionKind::Coercion) {}
    CoercionType type = {};
    Expression* operand = nullptr;
};

/// A property from an application's terminology. Without a container it is the target's.
struct TermPropertyExpression : Expression {
    TermPropertyExpression() : Expression(ExpressionKind::TermProperty) {}
    Term term = {};
    QString name; ///< the key under which a record has it
    Expression* container = nullptr;
};

enum class Builtin : quint8 {
    Class,
    Length,
    Contents,
    Rest,
    Reverse,
    PosixPath,
    QuotedForm,
    TextItemDelimiters,
    End,       // only to be set
    Beginning, // only to be set
};

/// A property that the language itself knows.
struct BuiltinPropertyExpression : Expression {
    BuiltinPropertyExpression() : Expression(ExpressionKind::BuiltinProperty) {}
    Builtin property = {};
    Expression* container = nullptr; ///< null: the target
};

/// `anything of x` that no terminology knows: a record's field, or the script's own property.
struct FieldExpression : Expression {
    FieldExpression() : Expression(ExpressionKind::Field) {}
    QString name;
    Expression* container = nullptr;
};

enum class PieceClass : quint8 { Item, Character, Word, Paragraph, TextItem, Text };

enum class SelectionForm : quint8 {
    Every,
    Index, ///< by number; an application's element also by name, when the value is a text
    Range,
    Name,
    Id,
    Middle,
    Some,
};

/// Which ones: shared by pieces of values and elements of applications.
struct Selection {
    SelectionForm form = SelectionForm::Every;
    Expression* first = nullptr; ///< the index, the name, the id, or where a range begins
    Expression* last = nullptr;  ///< where a range ends
};

/// One `item i of`: the index is a constant, or in a variable of the handler.
struct ItemStep {
    int slot = -1; ///< of the variable; negative: the constant
    qint64 constant = 0;
};

/// The way to `item 1 of item i of list` when it begins in a variable of the handler and every index is
/// simple: it can be followed without evaluating anything.
struct ItemPath {
    int slot = -1; ///< of the variable where it begins; negative: there is no such way
    std::vector<ItemStep> steps = {};
};

/// A part of a list or of a text.
struct PieceExpression : Expression {
    PieceExpression() : Expression(ExpressionKind::Piece) {}
    bool isItem() const { return piece == PieceClass::Item && selection.form == SelectionForm::Index; }

    PieceClass piece = {};
    Selection selection;
    Expression* container = nullptr; ///< null: the target
    ItemPath path;
};

/// A `whose` as far as it can be handed to the application: the values are found out in each run.
struct FilterTemplate {
    Filter::Operator op = {};
    std::vector<FilterTemplate> operands;
    Term property = {};
    Expression* value = nullptr; ///< null: `true`
};

/// Elements of an application's object.
struct ElementExpression : Expression {
    ElementExpression() : Expression(ExpressionKind::Element) {}
    /// Whether it means several objects, in a list, and not one.
    bool isMany() const {
        return selection.form == SelectionForm::Every || selection.form == SelectionForm::Range;
    }

    Term elementClass = {};
    QString className;
    Selection selection;
    Expression* container = nullptr; ///< null: the target
    bool selectedByWord = false;     ///< `every`, `first`: what a `whose` at the end of the chain is about
    Expression* condition = nullptr; ///< the `whose`, null without
    /// The same condition for the application; null when it can only be tried on each element.
    std::unique_ptr<FilterTemplate> filter;
};

/// `count x`, `number of tracks`.
struct CountExpression : Expression {
    CountExpression() : Expression(ExpressionKind::Count) {}
    Expression* operand = nullptr;
};

struct Handler;

struct CallExpression : Expression {
    CallExpression() : Expression(ExpressionKind::Call) {}
    QString name;
    std::vector<Expression*> arguments;
    const Handler* handler = nullptr; ///< null when the script has none of that name
    Expression* receiver = nullptr;   ///< null: the target
};

/// A command from an application's terminology.
struct CommandExpression : Expression {
    CommandExpression() : Expression(ExpressionKind::Command) {}
    Term command = {};
    QString name;
    Expression* direct = nullptr;
    std::vector<std::pair<Term, Expression*>> parameters;
};

enum class StandardCommand : quint8 { Log, Delay, DisplayDialog };

/// A command that the host carries out.
struct StandardCommandExpression : Expression {
    StandardCommandExpression() : Expression(ExpressionKind::StandardCommand) {}
    StandardCommand command = {};
    Expression* direct = nullptr;
    Expression* defaultAnswer = nullptr; ///< of a dialog
};

struct ApplicationExpression : Expression {
    ApplicationExpression() : Expression(ExpressionKind::ApplicationNamed) {}
    Expression* name = nullptr;
};

/// `alias "…"` and `POSIX file "…"`.
struct FileExpression : Expression {
    FileExpression() : Expression(ExpressionKind::FileNamed) {}
    Expression* path = nullptr;
};

/// `x exists`, `exists x`.
struct ExistsExpression : Expression {
    ExistsExpression() : Expression(ExpressionKind::Exists) {}
    Expression* operand = nullptr;
};

enum class StatementKind : quint8 {
    Expression,
    Set,
    Copy,
    If,
    Repeat,
    RepeatTimes,
    RepeatWhile,
    RepeatCounting,
    RepeatIn,
    Exit,
    Return,
    Tell,
    Try,
    Error,
    Considering,
    Group,
};

struct Statement : Node {
    explicit Statement(StatementKind k) : kind(k) {}
    const StatementKind kind;
    bool keepsResult = true; ///< whether somebody may ask for its result
};

using Block = std::vector<Statement*>;

struct ExpressionStatement : Statement {
    ExpressionStatement() : Statement(StatementKind::Expression) {}
    Expression* expression = nullptr;
};

/// `set target to value` and `copy value to target`.
struct AssignmentStatement : Statement {
    using Statement::Statement;
    Expression* target = nullptr;
    Expression* value = nullptr;
};

struct IfStatement : Statement {
    IfStatement() : Statement(StatementKind::If) {}
    std::vector<std::pair<Expression*, Block>> branches;
    Block otherwise;
    bool hasElse = false;
};

/// Every form of `repeat`; which of the expressions are there depends on the form.
struct RepeatStatement : Statement {
    using Statement::Statement;
    VariableExpression* variable = nullptr;
    Expression* from = nullptr; ///< where counting begins, or how often, or the list, or the condition
    Expression* to = nullptr;
    Expression* by = nullptr;
    bool until = false; ///< of RepeatWhile: ends when the condition is true
    Block body;
};

struct ReturnStatement : Statement {
    ReturnStatement() : Statement(StatementKind::Return) {}
    Expression* value = nullptr;
};

struct TellStatement : Statement {
    TellStatement() : Statement(StatementKind::Tell) {}
    Expression* target = nullptr;
    Block body;
};

struct TryStatement : Statement {
    TryStatement() : Statement(StatementKind::Try) {}
    Block body;
    Block onError;
    VariableExpression* message = nullptr;
    VariableExpression* number = nullptr;
};

struct ErrorStatement : Statement {
    ErrorStatement() : Statement(StatementKind::Error) {}
    Expression* message = nullptr;
    Expression* number = nullptr;
};

struct ConsideringStatement : Statement {
    ConsideringStatement() : Statement(StatementKind::Considering) {}
    bool considersCase = false;
    bool changesCase = false; ///< letter case was named at all
    Block body;
};

/// Statements that belong together and nothing else: `with timeout`.
struct GroupStatement : Statement {
    GroupStatement() : Statement(StatementKind::Group) {}
    Block body;
};

/// `on name(a, b)`, and what stands outside of all handlers.
struct Handler {
    QString name;
    std::vector<int> parameters; ///< the slots that the arguments go to
    std::vector<QString> slotNames;
    Block body;
};

/// A compiled text.
class Program {
public:
    /// Makes a node that lives as long as the program.
    template <typename T, typename... Arguments>
    T* make(Arguments&&... arguments) {
        auto node = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T* plain = node.get();
        m_nodes.push_back(std::move(node));
        return plain;
    }

    QString source;
    Handler main;
    std::vector<std::unique_ptr<Handler>> handlers;
    std::vector<QString> globalNames;
    /// `property name : value`, in their order: the global's slot and the first value.
    std::vector<std::pair<int, Expression*>> properties;

private:
    std::vector<std::unique_ptr<Node>> m_nodes;
};

} // namespace tarnwick::script
