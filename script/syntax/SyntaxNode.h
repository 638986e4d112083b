#pragma once

#include "script/values/Error.h"

#include <QtGlobal>

#include <vector>

namespace tarnwick::script {

/// What every part of a compiled text has: its place, and how deep the tree below it is.
struct Node {
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    SourceRange range;
    int depth = 1;
};

/// What an expression is. Some need no node of a type of their own.
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
    OwnedList,
    Owner,
    ReferenceTo,
    Round,
    Offset,
};

/// What has a value.
struct Expression : Node {
    explicit Expression(ExpressionKind k) : kind(k) {}
    const ExpressionKind kind;
};

/// What a statement is.
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

/// What is done.
struct Statement : Node {
    explicit Statement(StatementKind k) : kind(k) {}
    const StatementKind kind;
    bool keepsResult = true; ///< whether somebody may ask for its result
};

/// Statements one after the other.
using Block = std::vector<Statement*>;

} // namespace tarnwick::script
