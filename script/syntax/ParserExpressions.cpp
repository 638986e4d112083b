#include "script/syntax/Parser.h"
#include "script/values/Application.h"
#include "script/values/Cells.h"

namespace tarnwick::script {

Expression* Parser::parseExpression(int minimum) {
    const Nesting nesting(*this);
    Expression* left = parsePrefix();
    for (;;) {
        const Operator op = matchOperator();
        if (op.tokens == 0 || op.precedence < minimum)
            return left;
        const bool asksWhetherRunning = isRunningAhead(*left, op);
        skip(op.tokens);
        if (op.sort == Operator::Sort::As) {
            left = parseCoercion(left);
            continue;
        }
        if (asksWhetherRunning) {
            left = parseIsRunning(left, op.negated);
            continue;
        }
        const bool groupsRight = op.precedence == PowerPrecedence;
        left = makeOperation(op, left, parseExpression(op.precedence + (groupsRight ? 0 : 1)));
    }
}

Expression* Parser::parsePrefix() {
    const SourceRange begin = token().range;
    if (accept(Keyword::Not)) {
        auto* negation = make<UnaryExpression>(begin, ExpressionKind::Not);
        negation->operand = parseExpression(EqualityPrecedence);
        hold(*negation, negation->operand);
        finish(*negation);
        return negation;
    }
    if (accept(TokenKind::Minus)) {
        auto* negation = make<UnaryExpression>(begin, ExpressionKind::Negate);
        negation->operand = parseExpression(SignPrecedence);
        hold(*negation, negation->operand);
        finish(*negation);
        return negation;
    }
    if (accept(TokenKind::Plus))
        return parseExpression(SignPrecedence);
    if (accept(Keyword::Get))
        return parseExpression(AsPrecedence);
    return parseReference();
}

/// Whether `is running`, or `is not running`, is what `left` is asked: of an application by name, and of
/// `it`.
bool Parser::isRunningAhead(const Expression& left, const Operator& op) {
    if (left.kind != ExpressionKind::ApplicationNamed &&
        (left.kind != ExpressionKind::Target || m_scope.slots_.contains(QStringLiteral("running"))))
        return false;
    const auto behind = static_cast<std::size_t>(op.tokens);
    const bool saysIs =
        (token().is(Keyword::Is) && (behind == 1 || token(1).is(Keyword::Not))) || token().is(Keyword::Isnt);
    return saysIs && behind <= 2 && op.comparison == Filter::Operator::Equal &&
           !token(behind - 1).is(Keyword::Equal) && isWord("running", behind);
}

/// `application "Music" is running` asks the application, not the target.
Expression* Parser::parseIsRunning(Expression* application, bool negated) {
    auto* property = make<TermPropertyExpression>(application->range);
    property->name = take().text;
    property->term = terms::Running;
    property->container = application;
    hold(*property, application);
    finish(*property);
    if (!negated)
        return property;
    auto* negation = make<UnaryExpression>(application->range, ExpressionKind::Not);
    negation->operand = property;
    hold(*negation, property);
    return negation;
}

Expression* Parser::parseCoercion(Expression* operand) {
    static constexpr std::pair<const char*, CoercionType> types[] = {
        {"text", CoercionType::Text},    {"string", CoercionType::Text},   {"integer", CoercionType::Integer},
        {"real", CoercionType::Real},    {"number", CoercionType::Number}, {"boolean", CoercionType::Boolean},
        {"list", CoercionType::List},    {"record", CoercionType::Record}, {"alias", CoercionType::Alias},
        {"Unicode", CoercionType::Text},
    };
    for (const auto& [name, type] : types) {
        if (!acceptWord(name))
            continue;
        if (qstrcmp(name, "Unicode") == 0 && !acceptWord("text"))
            failExpecting("“text”");
        auto* coercion = make<CoercionExpression>(operand->range);
        coercion->type = type;
        coercion->operand = operand;
        hold(*coercion, operand);
        finish(*coercion);
        return coercion;
    }
    failExpecting("class name");
}

Expression* Parser::makeText(const SourceRange& range, const QString& text) {
    auto* literal = make<LiteralExpression>(range);
    literal->own(new TextCell(text));
    return literal;
}

Expression* Parser::makeConstant(const SourceRange& range, Term code, const QString& name) {
    auto* literal = make<LiteralExpression>(range);
    literal->own(new ConstantCell(code, name));
    return literal;
}

/// A literal or something in brackets; null when there is none.
Expression* Parser::parseLiteral() {
    const auto simple = [this](const Value& value) {
        auto* literal = make<LiteralExpression>(take().range);
        literal->value = value;
        return literal;
    };
    switch (token().kind) {
    case TokenKind::Integer:
        return simple(Value::integer(token().integer));
    case TokenKind::Real:
        return simple(Value::real(token().real));
    case TokenKind::Text: {
        const Token text = take();
        return makeText(text.range, text.text);
    }
    case TokenKind::LeftParenthesis:
        return parseParentheses();
    case TokenKind::LeftBrace:
        return parseBraces();
    default:
        break;
    }
    if (token().is(Keyword::True) || token().is(Keyword::False))
        return simple(Value::boolean(token().is(Keyword::True)));
    if (token().is(Keyword::Return))
        return makeText(take().range, QStringLiteral("\r"));
    if (areWords({"missing", "value"})) {
        auto* literal = make<LiteralExpression>(token().range);
        skip(2);
        literal->value = Value::missing();
        finish(*literal);
        return literal;
    }
    return nullptr;
}

Expression* Parser::parseParentheses() {
    const ReferencesEndAtIn isOfAgain(*this, false);
    take();
    Expression* inner = parseExpression();
    expect(TokenKind::RightParenthesis, "“)”");
    return inner;
}

Expression* Parser::parseBraces() {
    const ReferencesEndAtIn isOfAgain(*this, false);
    const SourceRange begin = take().range;
    if (!token().is(TokenKind::RightBrace)) {
        const bool isBarred = token().is(TokenKind::BarredName) && token(1).is(TokenKind::Colon);
        std::size_t words = 0;
        while (isIdentifier(words))
            ++words;
        if (isBarred || (words > 0 && token(words).is(TokenKind::Colon)))
            return parseRecord(begin);
    }
    auto* list = make<ListExpression>(begin);
    while (!token().is(TokenKind::RightBrace)) {
        list->items.push_back(parseExpression());
        hold(*list, list->items.back());
        if (!accept(TokenKind::Comma))
            break;
    }
    expect(TokenKind::RightBrace, "“}”");
    finish(*list);
    return list;
}

Expression* Parser::parseRecord(const SourceRange& begin) {
    auto* record = make<RecordExpression>(begin);
    do {
        const QString key = parseRecordKey();
        expect(TokenKind::Colon, "“:”");
        record->fields.emplace_back(key, parseExpression());
        hold(*record, record->fields.back().second);
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightBrace, "“}”");
    finish(*record);
    return record;
}

/// One name, or several words of a terminology.
QString Parser::parseRecordKey() {
    if (token().is(TokenKind::BarredName))
        return take().text;
    QString key;
    while (isIdentifier())
        key += (key.isEmpty() ? QString() : QStringLiteral(" ")) + take().text;
    if (key.isEmpty())
        failExpecting("identifier");
    return key;
}

} // namespace tarnwick::script
