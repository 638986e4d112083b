#include "script/syntax/Parser.h"

namespace tarnwick::script {

/// `{a, b} of x`: the same as `{a of x, b of x}`, but that x is found out once.
Parser::Link Parser::parseOwnedList(ListExpression* list) {
    auto* owned = make<OwnedListExpression>(list->range);
    owned->list = list;
    hold(*owned, list);
    return {owned, &owned->container};
}

/// Known only when the whole chain is: hangs the items on the owner.
void Parser::distribute(OwnedListExpression& owned) {
    const Expression& container = *owned.container;
    // A set of the application's objects is asked for each property at once; a variable costs nothing.
    const bool isShared = container.kind == ExpressionKind::Variable ||
                          (container.kind == ExpressionKind::Element &&
                           static_cast<const ElementExpression&>(container).isMany());
    if (!isShared)
        owned.owner = make<Expression>(container.range, ExpressionKind::Owner);
    for (Expression*& item : owned.list->items) {
        Expression** open = openContainer(item);
        if (!open)
            fail(item->range, QStringLiteral("Expected property but found expression."));
        *open = isShared ? owned.container : owned.owner;
    }
}

/// Where what the item belongs to goes; null when it cannot belong to anything. A name alone becomes a field.
Expression** Parser::openContainer(Expression*& item) {
    Expression** container = nullptr;
    switch (item->kind) {
    case ExpressionKind::Variable: {
        const auto& variable = static_cast<const VariableExpression&>(*item);
        if (const std::optional<Builtin> builtin = builtinNamed(variable.name)) {
            auto* property = make<BuiltinPropertyExpression>(item->range);
            property->property = *builtin;
            item = property;
            return &property->container;
        }
        auto* field = make<FieldExpression>(item->range);
        field->name = variable.name;
        item = field;
        return &field->container;
    }
    case ExpressionKind::TermProperty:
        container = &static_cast<TermPropertyExpression*>(item)->container;
        break;
    case ExpressionKind::BuiltinProperty:
        container = &static_cast<BuiltinPropertyExpression*>(item)->container;
        break;
    case ExpressionKind::Field:
        container = &static_cast<FieldExpression*>(item)->container;
        break;
    case ExpressionKind::Piece:
        container = &static_cast<PieceExpression*>(item)->container;
        break;
    case ExpressionKind::Element:
        container = &static_cast<ElementExpression*>(item)->container;
        break;
    default:
        return nullptr;
    }
    return *container ? openContainer(*container) : container;
}

} // namespace tarnwick::script
