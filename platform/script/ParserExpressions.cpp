#include "platform/script/Application.h"
#include "platform/script/Cells.h"
#include "platform/script/Parser.h"

namespace tarnwick::script {

namespace {

// From the loosest to the tightest binding.
enum Precedence : int {
    OrPrecedence = 1,
    AndPrecedence,
    NotPrecedence,
    EqualityPrecedence,
    RelationPrecedence,
    AsPrecedence,
    ConcatenationPrecedence,
    SumPrecedence,
    ProductPrecedence,
    PowerPrecedence,
    SignPrecedence,
};

} // namespace

Expression* Parser::parseExpression(int minimum) {
    const Nesting nesting(*this);
    Expression* left = parsePrefix();
    for (;;) {
        const Operator op = matchOperator();
        if (op.tokens == 0 || op.precedence < minimum)
            return left;
        skip(op.tokens);
        if (op.sort == Operator::Sort::As) {
            left = parseCoercion(left);
            continue;
        }
        if (left->kind == ExpressionKind::ApplicationNamed && op.precedence == EqualityPrecedence &&
            isWord("running")) {
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
    if (token().is(Keyword::Does)) {
        if (!token(1).is(Keyword::Not))
            return {};
        op.negated = true;
        at = 2;
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
    take();
    Expression* inner = parseExpression();
    expect(TokenKind::RightParenthesis, "“)”");
    return inner;
}

Expression* Parser::parseBraces() {
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

/// Whether a command's or a `return`'s value may begin here.
bool Parser::startsExpression() {
    switch (token().kind) {
    case TokenKind::Integer:
    case TokenKind::Real:
    case TokenKind::Text:
    case TokenKind::BarredName:
    case TokenKind::LeftParenthesis:
    case TokenKind::LeftBrace:
    case TokenKind::Minus:
        return true;
    case TokenKind::Word:
        break;
    default:
        return false;
    }
    switch (token().keyword) {
    case Keyword::None:
    case Keyword::True:
    case Keyword::False:
    case Keyword::It:
    case Keyword::Its:
    case Keyword::Me:
    case Keyword::My:
    case Keyword::Not:
    case Keyword::Get:
    case Keyword::The:
    case Keyword::Every:
    case Keyword::Some:
    case Keyword::First:
    case Keyword::Second:
    case Keyword::Third:
    case Keyword::Fourth:
    case Keyword::Fifth:
    case Keyword::Sixth:
    case Keyword::Seventh:
    case Keyword::Eighth:
    case Keyword::Ninth:
    case Keyword::Tenth:
    case Keyword::Last:
    case Keyword::Front:
    case Keyword::Back:
    case Keyword::Middle:
    case Keyword::Return:
        return true;
    default:
        return false;
    }
}

/// `log`, `delay`, `display dialog`; null when it is none.
Expression* Parser::parseStandardCommand() {
    const SourceRange begin = token().range;
    if (areWords({"display", "dialog"}))
        return parseDialog(begin);
    const bool isLog = isWord("log");
    if (!isLog && !isWord("delay"))
        return nullptr;
    take();
    auto* command = make<StandardCommandExpression>(begin);
    command->command = isLog ? StandardCommand::Log : StandardCommand::Delay;
    if (startsExpression()) {
        command->direct = parseExpression();
        hold(*command, command->direct);
    }
    finish(*command);
    return command;
}

Expression* Parser::parseDialog(const SourceRange& begin) {
    skip(2);
    auto* command = make<StandardCommandExpression>(begin);
    command->command = StandardCommand::DisplayDialog;
    command->direct = parseExpression();
    hold(*command, command->direct);
    for (;;) {
        if (areWords({"default", "answer"})) {
            skip(2);
            command->defaultAnswer = parseExpression();
            hold(*command, command->defaultAnswer);
        } else if (areWords({"default", "button"}) || areWords({"cancel", "button"}) ||
                   areWords({"giving", "up", "after"}) || areWords({"with", "title"}) ||
                   areWords({"with", "icon"})) {
            skip(isWord("giving") ? 3 : 2);
            if (!acceptWord("stop") && !acceptWord("note") && !acceptWord("caution"))
                parseExpression();
        } else if (acceptWord("buttons")) {
            parseExpression();
        } else {
            break;
        }
    }
    finish(*command);
    return command;
}

/// A command of the application, with what it is about and its labelled parameters.
Expression* Parser::parseCommand(const Phrase& phrase) {
    auto* command = make<CommandExpression>(token().range);
    command->command = *phrase.entry->command;
    command->name = phrase.text;
    skip(phrase.words);
    const Terminology::Parameters& parameters = m_terminology->parameters(command->command);
    const auto matchLabel = [&]() -> const std::pair<QString, Term>* {
        for (const auto& parameter : parameters) {
            const QStringList words = parameter.first.split(QLatin1Char(' '));
            std::size_t at = 0;
            while (at < static_cast<std::size_t>(words.size()) &&
                   isWord(words[static_cast<qsizetype>(at)].toUtf8().constData(), at))
                ++at;
            if (at == static_cast<std::size_t>(words.size())) {
                skip(static_cast<int>(at));
                return &parameter;
            }
        }
        return nullptr;
    };
    const auto parseParameters = [&] {
        while (const auto* label = matchLabel()) {
            command->parameters.emplace_back(label->second, parseExpression());
            hold(*command, command->parameters.back().second);
        }
    };
    parseParameters();
    if (command->parameters.empty() && startsExpression()) {
        command->direct = parseExpression();
        hold(*command, command->direct);
        parseParameters();
    }
    finish(*command);
    return command;
}

} // namespace tarnwick::script
