#pragma once

#include "script/syntax/Expressions.h"
#include "script/syntax/SyntaxNode.h"

#include <utility>
#include <vector>

namespace tarnwick::script {

/// An expression for its own sake: a command, or the result of the script.
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

/// `if`, every `else if`, and `else`.
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

/// `return`.
struct ReturnStatement : Statement {
    ReturnStatement() : Statement(StatementKind::Return) {}
    Expression* value = nullptr;
};

/// `tell target`.
struct TellStatement : Statement {
    TellStatement() : Statement(StatementKind::Tell) {}
    Expression* target = nullptr;
    Block body;
};

/// `try` … `on error`.
struct TryStatement : Statement {
    TryStatement() : Statement(StatementKind::Try) {}
    Block body;
    Block onError;
    VariableExpression* message = nullptr;
    VariableExpression* number = nullptr;
    Expression* onlyNumber = nullptr; ///< the one error that is caught; null: every one
};

/// `error "…" number n`.
struct ErrorStatement : Statement {
    ErrorStatement() : Statement(StatementKind::Error) {}
    Expression* message = nullptr;
    Expression* number = nullptr;
};

/// `considering case`, `ignoring case`, `ignoring application responses`.
struct ConsideringStatement : Statement {
    ConsideringStatement() : Statement(StatementKind::Considering) {}
    bool considersCase = false;
    bool changesCase = false; ///< letter case was named at all
    bool ignoresResponses = false;
    bool changesResponses = false; ///< the responses of applications were named at all
    Block body;
};

/// Statements that belong together and nothing else: `with timeout`.
struct GroupStatement : Statement {
    GroupStatement() : Statement(StatementKind::Group) {}
    Block body;
};

} // namespace tarnwick::script
