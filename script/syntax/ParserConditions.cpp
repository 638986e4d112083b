#include "script/syntax/Parser.h"

#include <algorithm>
#include <optional>

namespace tarnwick::script {

namespace {

bool isElement(const Expression& expression) { return expression.kind == ExpressionKind::Element; }

/// A property of the element that a `whose` is about: one without a container of its own.
const TermPropertyExpression* ownProperty(const Expression& expression) {
    if (expression.kind != ExpressionKind::TermProperty)
        return nullptr;
    const auto& property = static_cast<const TermPropertyExpression&>(expression);
    return !property.container || property.container->kind == ExpressionKind::Target ? &property : nullptr;
}

/// The operator that says the same with the sides exchanged.
std::optional<Filter::Operator> mirrored(Filter::Operator op) {
    switch (op) {
    case Filter::Operator::Equal:
        return Filter::Operator::Equal;
    case Filter::Operator::Less:
        return Filter::Operator::Greater;
    case Filter::Operator::LessOrEqual:
        return Filter::Operator::GreaterOrEqual;
    case Filter::Operator::Greater:
        return Filter::Operator::Less;
    case Filter::Operator::GreaterOrEqual:
        return Filter::Operator::LessOrEqual;
    case Filter::Operator::Contains:
        return Filter::Operator::IsIn;
    case Filter::Operator::IsIn:
        return Filter::Operator::Contains;
    default:
        return {};
    }
}

} // namespace

/// The condition belongs to the last `every`, ordinal or plural of the chain; else to its first element.
void Parser::attachCondition(const std::vector<Link>& links) {
    const Keyword keyword = token().keyword;
    const bool isThat = keyword == Keyword::That && links.back().node;
    if (keyword != Keyword::Whose && keyword != Keyword::Where && !isThat)
        return;
    ElementExpression* element = nullptr;
    for (const Link& link : links) {
        if (!isElement(*link.node))
            continue;
        auto* candidate = static_cast<ElementExpression*>(link.node);
        const bool isChosenByWord = !candidate->selection.first || candidate->selectedByWord;
        if (!element || isChosenByWord)
            element = candidate;
    }
    if (!element || element->condition)
        failExpecting("end of line");
    take();
    element->condition = parseExpression();
    element->filter = makeFilter(element->condition);
    for (std::size_t i = links.size(); i-- > 0;) {
        if (links[i].node == element)
            hold(*element, element->condition);
        else if (i + 1 < links.size())
            hold(*links[i].node, links[i + 1].node);
        links[i].node->range.length = m_lastRange.offset + m_lastRange.length - links[i].node->range.offset;
    }
}

std::unique_ptr<FilterTemplate> Parser::makeFilter(Expression* condition) const {
    auto filter = std::make_unique<FilterTemplate>();
    const auto addOperands = [this, &filter](std::initializer_list<Expression*> operands) {
        return std::all_of(operands.begin(), operands.end(), [&](Expression* operand) {
            std::unique_ptr<FilterTemplate> made = makeFilter(operand);
            if (made)
                filter->operands.push_back(std::move(*made));
            return made != nullptr;
        });
    };
    bool isComplete = false;
    if (condition->kind == ExpressionKind::Logical) {
        const auto* logical = static_cast<const LogicalExpression*>(condition);
        filter->op = logical->isAnd ? Filter::Operator::And : Filter::Operator::Or;
        isComplete = addOperands({logical->left, logical->right});
    } else if (condition->kind == ExpressionKind::Not) {
        filter->op = Filter::Operator::Not;
        isComplete = addOperands({static_cast<const UnaryExpression*>(condition)->operand});
    } else if (condition->kind == ExpressionKind::Comparison) {
        return makeFilterLeaf(static_cast<const ComparisonExpression&>(*condition));
    } else if (const TermPropertyExpression* property = ownProperty(*condition)) {
        filter->op = Filter::Operator::Equal;
        filter->property = property->term;
        isComplete = true;
    }
    return isComplete ? std::move(filter) : nullptr;
}

std::unique_ptr<FilterTemplate> Parser::makeFilterLeaf(const ComparisonExpression& comparison) const {
    const TermPropertyExpression* left = ownProperty(*comparison.left);
    const TermPropertyExpression* right = ownProperty(*comparison.right);
    if ((left != nullptr) == (right != nullptr))
        return nullptr;
    const std::optional<Filter::Operator> op = left ? comparison.op : mirrored(comparison.op);
    if (!op)
        return nullptr;
    auto leaf = std::make_unique<FilterTemplate>();
    leaf->op = *op;
    leaf->property = (left ? left : right)->term;
    leaf->value = left ? comparison.right : comparison.left;
    if (!comparison.negated)
        return leaf;
    if (*op == Filter::Operator::Equal) {
        leaf->op = Filter::Operator::NotEqual;
        return leaf;
    }
    auto negation = std::make_unique<FilterTemplate>();
    negation->op = Filter::Operator::Not;
    negation->operands.push_back(std::move(*leaf));
    return negation;
}

} // namespace tarnwick::script
