#include "script/syntax/Parser.h"

namespace tarnwick::script {

Parser::Operator Parser::matchOperator() {
    using Sort = Operator::Sort;
    const auto binary = [](BinaryOperator op, int precedence) {
        return Operator{.sort = Sort::Binary, .precedence = precedence, .tokens = 1, .binary = op};
    };
    const auto comparison = [](Filter::Operator op, bool negated = false) {
        const bool isEquality = op == Filter::Operator::Equal;
        return Operator{.sort = Sort::Comparison,
                        .precedence = isEquality ? EqualityPrecedence : RelationPrecedence,
                        .tokens = 1,
                        .comparison = op,
                        .negated = negated};
    };
    switch (token().kind) {
    case TokenKind::Plus:
        return binary(BinaryOperator::Add, SumPrecedence);
    case TokenKind::Minus:
        return binary(BinaryOperator::Subtract, SumPrecedence);
    case TokenKind::Times:
        return binary(BinaryOperator::Multiply, ProductPrecedence);
    case TokenKind::Divide:
        return binary(BinaryOperator::Divide, ProductPrecedence);
    case TokenKind::Power:
        return binary(BinaryOperator::Power, PowerPrecedence);
    case TokenKind::Ampersand:
        return binary(BinaryOperator::Concatenate, ConcatenationPrecedence);
    case TokenKind::Equal:
        return comparison(Filter::Operator::Equal);
    case TokenKind::NotEqual:
        return comparison(Filter::Operator::Equal, true);
    case TokenKind::Less:
        return comparison(Filter::Operator::Less);
    case TokenKind::LessOrEqual:
        return comparison(Filter::Operator::LessOrEqual);
    case TokenKind::Greater:
        return comparison(Filter::Operator::Greater);
    case TokenKind::GreaterOrEqual:
        return comparison(Filter::Operator::GreaterOrEqual);
    case TokenKind::Word:
        break;
    default:
        return {};
    }
    switch (token().keyword) {
    case Keyword::Div:
        return binary(BinaryOperator::IntegerDivide, ProductPrecedence);
    case Keyword::Mod:
        return binary(BinaryOperator::Modulo, ProductPrecedence);
    case Keyword::And:
        return {.sort = Sort::And, .precedence = AndPrecedence, .tokens = 1};
    case Keyword::Or:
        return {.sort = Sort::Or, .precedence = OrPrecedence, .tokens = 1};
    case Keyword::As:
        return {.sort = Sort::As, .precedence = AsPrecedence, .tokens = 1};
    default:
        return matchWordOperator();
    }
}

/// The comparisons that are words: `contains`, `does not come before`, `is not less than or equal to`.
Parser::Operator Parser::matchWordOperator() {
    Operator op{.sort = Operator::Sort::Comparison, .precedence = RelationPrecedence};
    std::size_t at = 0;
    if (token().is(Keyword::Is) || token().is(Keyword::Isnt))
        return matchIs();
    if (token().is(Keyword::Doesnt) || token().is(Keyword::Does)) {
        const bool isOneWord = token().is(Keyword::Doesnt);
        if (!isOneWord && !token(1).is(Keyword::Not))
            return {};
        op.negated = true;
        at = isOneWord ? 1 : 2;
    }
    const Token& word = token(at);
    op.tokens = static_cast<int>(at) + 1;
    if (word.is(Keyword::Equals) || (op.negated && word.is(Keyword::Equal))) {
        op.comparison = Filter::Operator::Equal;
        op.precedence = EqualityPrecedence;
    } else if (word.is(Keyword::Contains)) {
        op.comparison = Filter::Operator::Contains;
    } else if ((word.is(Keyword::Starts) || word.is(Keyword::Begins)) && token(at + 1).is(Keyword::With)) {
        op.comparison = Filter::Operator::StartsWith;
        ++op.tokens;
    } else if ((word.is(Keyword::Ends) || word.is(Keyword::End)) && token(at + 1).is(Keyword::With)) {
        op.comparison = Filter::Operator::EndsWith;
        ++op.tokens;
    } else if (word.is(Keyword::Comes) || (op.negated && isWord("come", at))) {
        op.comparison = isWord("after", at + 1) ? Filter::Operator::Greater : Filter::Operator::Less;
        ++op.tokens;
    } else {
        return {};
    }
    return op;
}

Parser::Operator Parser::matchIs() {
    Operator op{.sort = Operator::Sort::Comparison,
                .precedence = EqualityPrecedence,
                .tokens = 1,
                .comparison = Filter::Operator::Equal};
    std::size_t at = 1;
    if (token().is(Keyword::Isnt) || token(1).is(Keyword::Not)) {
        op.negated = true;
        at = token().is(Keyword::Isnt) ? 1 : 2;
    }
    op.tokens = static_cast<int>(at);
    if (token(at).is(Keyword::In)) {
        op.comparison = Filter::Operator::IsIn;
        op.tokens += 1;
    } else if (isWord("contained", at) && token(at + 1).is(Keyword::By)) {
        op.comparison = Filter::Operator::IsIn;
        op.tokens += 2;
    } else if (token(at).is(Keyword::Equal)) {
        op.tokens += token(at + 1).is(Keyword::To) ? 2 : 1;
    } else {
        matchRelation(op, at);
    }
    if (op.comparison != Filter::Operator::Equal)
        op.precedence = RelationPrecedence;
    return op;
}

/// `less than`, `greater than or equal to`, `before`, `after` behind an `is`.
void Parser::matchRelation(Operator& op, std::size_t at) {
    const bool isGreater = token(at).is(Keyword::Greater);
    if ((isGreater || token(at).is(Keyword::Less)) && token(at + 1).is(Keyword::Than)) {
        op.comparison = isGreater ? Filter::Operator::Greater : Filter::Operator::Less;
        op.tokens += 2;
        if (token(at + 2).is(Keyword::Or) && token(at + 3).is(Keyword::Equal)) {
            op.comparison = isGreater ? Filter::Operator::GreaterOrEqual : Filter::Operator::LessOrEqual;
            op.tokens += token(at + 4).is(Keyword::To) ? 3 : 2;
        }
    } else if (isWord("before", at) || isWord("after", at)) {
        op.comparison = isWord("after", at) ? Filter::Operator::Greater : Filter::Operator::Less;
        op.tokens += 1;
    }
}

Expression* Parser::makeOperation(const Operator& op, Expression* left, Expression* right) {
    const auto complete = [&](auto* node) {
        node->left = left;
        node->right = right;
        hold(*node, left);
        hold(*node, right);
        finish(*node);
        return node;
    };
    if (op.sort == Operator::Sort::Binary) {
        auto* node = make<BinaryExpression>(left->range);
        node->op = op.binary;
        return complete(node);
    }
    if (op.sort != Operator::Sort::Comparison) {
        auto* node = make<LogicalExpression>(left->range);
        node->isAnd = op.sort == Operator::Sort::And;
        return complete(node);
    }
    auto* node = make<ComparisonExpression>(left->range);
    node->op = op.comparison;
    node->negated = op.negated;
    return complete(node);
}

} // namespace tarnwick::script
