#pragma once

#include "script/syntax/SyntaxNode.h"
#include "script/values/Cells.h"
#include "script/values/Filter.h"
#include "script/values/Term.h"
#include "script/values/Value.h"

#include <QString>

#include <utility>
#include <vector>

namespace tarnwick::script {

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

/// A variable by its slot.
struct VariableExpression : Expression {
    VariableExpression() : Expression(ExpressionKind::Variable) {}
    QString name;
    int slot = 0;
    bool isGlobal = false; ///< the slot is one of the script, not of the handler
};

/// `{a, b}`.
struct ListExpression : Expression {
    ListExpression() : Expression(ExpressionKind::List) {}
    std::vector<Expression*> items;
};

/// `{name, artist} of owner`: every item is asked of the same owner.
struct OwnedListExpression : Expression {
    OwnedListExpression() : Expression(ExpressionKind::OwnedList) {}
    ListExpression* list = nullptr;
    Expression* container = nullptr;
    /// What the items hang on where the owner has to be found out once for all of them; else they hang on
    /// `container`, and it is null.
    Expression* owner = nullptr;
};

/// `{name:a, other:b}`.
struct RecordExpression : Expression {
    RecordExpression() : Expression(ExpressionKind::Record) {}
    std::vector<std::pair<QString, Expression*>> fields;
};

/// `not x` and `-x`.
struct UnaryExpression : Expression {
    using Expression::Expression;
    Expression* operand = nullptr;
};

/// Arithmetic, and `&`.
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

/// `a + b` and its like.
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

/// What a value can be made into.
enum class CoercionType : quint8 { Text, Integer, Real, Number, Boolean, List, Record, Alias };

/// `x as text`.
struct CoercionExpression : Expression {
    CoercionExpression() : Expression(ExpressionKind::Coercion) {}
    CoercionType type = {};
    Expression* operand = nullptr;
};

/// `count x`, `number of tracks`.
struct CountExpression : Expression {
    CountExpression() : Expression(ExpressionKind::Count) {}
    Expression* operand = nullptr;
};

struct Handler;

/// A call of a handler of the script.
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

/// Which of the host's commands.
enum class StandardCommand : quint8 { Log, Delay, DisplayDialog };

/// `a reference to x`.
struct ReferenceToExpression : Expression {
    ReferenceToExpression() : Expression(ExpressionKind::ReferenceTo) {}
    Expression* operand = nullptr;
};

/// How `round` goes.
enum class Rounding : quint8 { ToNearest, AsTaught, Up, Down, TowardZero };

/// `round x rounding up`.
struct RoundExpression : Expression {
    RoundExpression() : Expression(ExpressionKind::Round) {}
    Rounding rounding = Rounding::ToNearest;
    Expression* operand = nullptr;
};

/// `offset of part in whole`.
struct OffsetExpression : Expression {
    OffsetExpression() : Expression(ExpressionKind::Offset) {}
    Expression* part = nullptr;
    Expression* whole = nullptr;
};

/// A command that the host carries out.
struct StandardCommandExpression : Expression {
    StandardCommandExpression() : Expression(ExpressionKind::StandardCommand) {}
    StandardCommand command = {};
    Expression* direct = nullptr;
    Expression* defaultAnswer = nullptr; ///< of a dialog
};

/// `application "…"`.
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

} // namespace tarnwick::script
