#pragma once

#include "script/syntax/SyntaxNode.h"
#include "script/values/Filter.h"
#include "script/values/Term.h"

#include <QString>

#include <memory>
#include <vector>

namespace tarnwick::script {

/// A property from an application's terminology. Without a container it is the target's.
struct TermPropertyExpression : Expression {
    TermPropertyExpression() : Expression(ExpressionKind::TermProperty) {}
    Term term = {};
    QString name; ///< the key under which a record has it
    Expression* container = nullptr;
};

/// Which of the language's own properties.
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

/// What lists and texts can be taken apart into.
enum class PieceClass : quint8 { Item, Character, Word, Paragraph, TextItem, Text, ItemOfClass };

/// How parts are chosen.
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
    Term itemClass = {}; ///< of ItemOfClass: the language's own class that the items of the list have
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

} // namespace tarnwick::script
