#include "platform/script/Parser.h"

#include "platform/script/Application.h"
#include "platform/script/Coercion.h"

#include <algorithm>

namespace tarnwick::script {

namespace {

constexpr int MaximumParserNesting = 200;

bool leaves(const Block& block);

/// Whether what stands after the statement is never reached.
bool leaves(const Statement& statement) {
    switch (statement.kind) {
    case StatementKind::Return:
    case StatementKind::Error:
        return true;
    case StatementKind::If: {
        const auto& branch = static_cast<const IfStatement&>(statement);
        return branch.hasElse && leaves(branch.otherwise) &&
               std::all_of(branch.branches.begin(), branch.branches.end(),
                           [](const auto& each) { return leaves(each.second); });
    }
    case StatementKind::Tell:
        return leaves(static_cast<const TellStatement&>(statement).body);
    default:
        return false;
    }
}

bool leaves(const Block& block) { return !block.empty() && leaves(*block.back()); }

void dropResults(const Block& block) {
    for (Statement* statement : block) {
        statement->keepsResult = false;
        switch (statement->kind) {
        case StatementKind::If:
            for (const auto& [condition, body] : static_cast<IfStatement*>(statement)->branches)
                dropResults(body);
            dropResults(static_cast<IfStatement*>(statement)->otherwise);
            break;
        case StatementKind::Repeat:
        case StatementKind::RepeatTimes:
        case StatementKind::RepeatWhile:
        case StatementKind::RepeatCounting:
        case StatementKind::RepeatIn:
            dropResults(static_cast<RepeatStatement*>(statement)->body);
            break;
        case StatementKind::Tell:
            dropResults(static_cast<TellStatement*>(statement)->body);
            break;
        case StatementKind::Try:
            dropResults(static_cast<TryStatement*>(statement)->body);
            dropResults(static_cast<TryStatement*>(statement)->onError);
            break;
        case StatementKind::Considering:
            dropResults(static_cast<ConsideringStatement*>(statement)->body);
            break;
        case StatementKind::Group:
            dropResults(static_cast<GroupStatement*>(statement)->body);
            break;
        default:
            break;
        }
    }
}

} // namespace

Parser::Nesting::Nesting(Parser& parser) : m_parser(parser) {
    if (++parser.m_nesting > MaximumParserNesting) {
        const SourceRange range = parser.token().range;
        --parser.m_nesting;
        parser.fail(range, QStringLiteral("Stack overflow."), errors::StackOverflow);
    }
}

Parser::Parser(const QString& source, const ApplicationProvider& applications)
    : m_applications(applications), m_program(std::make_shared<Program>()), m_scanner(m_program->source) {
    m_program->source = source;
    m_scanner = Scanner(m_program->source);
    m_scope.isMain = true;
}

std::shared_ptr<const Program> Parser::parse() {
    parseScript();
    resolveNames();
    dropUnusedResults(m_program->main);
    for (const auto& handler : m_program->handlers)
        dropUnusedResults(*handler);
    return m_program;
}

// Tokens

const Token& Parser::token(std::size_t ahead) {
    while (m_tokens.size() <= ahead)
        m_tokens.push_back(m_scanner.next());
    return m_tokens[ahead];
}

Token Parser::take() {
    token();
    Token taken = std::move(m_tokens.front());
    m_tokens.pop_front();
    m_lastRange = taken.range;
    return taken;
}

bool Parser::accept(TokenKind kind) {
    if (!token().is(kind))
        return false;
    take();
    return true;
}

bool Parser::accept(Keyword keyword) {
    if (!token().is(keyword))
        return false;
    take();
    return true;
}

bool Parser::acceptWord(const char* word) {
    if (!isWord(word))
        return false;
    take();
    return true;
}

bool Parser::isWord(const char* word, std::size_t ahead) {
    const Token& candidate = token(ahead);
    return candidate.is(TokenKind::Word) &&
           candidate.text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool Parser::areWords(std::initializer_list<const char*> words) {
    std::size_t ahead = 0;
    return std::all_of(words.begin(), words.end(), [&](const char* word) { return isWord(word, ahead++); });
}

void Parser::skip(int tokens) {
    for (; tokens > 0; --tokens)
        take();
}

void Parser::expect(TokenKind kind, const char* what) {
    if (!accept(kind))
        failExpecting(what);
}

void Parser::expect(Keyword keyword, const char* what) {
    if (!accept(keyword))
        failExpecting(what);
}

void Parser::expectEndOfLine() {
    if (!token().is(TokenKind::End) && !accept(TokenKind::NewLine))
        failExpecting("end of line");
}

void Parser::skipNewLines() {
    while (accept(TokenKind::NewLine)) {
    }
}

void Parser::failExpecting(const char* what) {
    const Token& found = token();
    SourceRange range = found.range;
    if ((found.is(TokenKind::NewLine) || found.is(TokenKind::End)) && m_lastRange.line == range.line) {
        // Behind the last word that counts, not behind a comment.
        range = m_lastRange;
        range.column += range.length;
        range.offset += range.length;
        range.length = 0;
    }
    fail(range,
         QStringLiteral("Expected %1 but found %2.").arg(QString::fromUtf8(what), found.description()));
}

void Parser::fail(const SourceRange& range, const QString& message, int number) const {
    throw Error{number, message, range};
}

// Nodes

void Parser::hold(Node& node, const Node* child) const {
    if (child)
        node.depth = std::max(node.depth, child->depth + 1);
    if (node.depth > MaximumDepth)
        fail(node.range, QStringLiteral("Stack overflow."), errors::StackOverflow);
}

/// Stretches the node's place to the last token taken.
void Parser::finish(Node& node) {
    node.range.length = m_lastRange.offset + m_lastRange.length - node.range.offset;
}

VariableExpression* Parser::makeVariable(const Token& name) {
    auto* variable = make<VariableExpression>(name.range);
    variable->name = name.text;
    const QString key = name.text.toLower();
    if (m_scope.globals.contains(key)) {
        variable->isGlobal = true;
        variable->slot = m_globals.value(key);
        return variable;
    }
    auto slot = m_scope.slots_.find(key);
    if (slot == m_scope.slots_.end()) {
        slot = m_scope.slots_.insert(key, static_cast<int>(m_scope.names.size()));
        m_scope.names.push_back(name.text);
    }
    variable->slot = *slot;
    if (!m_scope.locals.contains(key))
        m_variables.emplace_back(variable, m_scope.isMain);
    return variable;
}

/// A script's properties are seen in every handler, its globals in the main one: known only at the end.
void Parser::resolveNames() {
    for (const auto& [variable, isMain] : m_variables) {
        const QString key = variable->name.toLower();
        if (m_properties.contains(key) || (isMain && m_globals.contains(key))) {
            variable->isGlobal = true;
            variable->slot = m_globals.value(key);
        }
    }
    for (CallExpression* call : m_calls) {
        for (const auto& handler : m_program->handlers) {
            if (handler->name.compare(call->name, Qt::CaseInsensitive) == 0)
                call->handler = handler.get();
        }
    }
    for (PieceExpression* piece : m_pieces)
        findPath(*piece);
}

/// Known only when it is known which variables are the handler's own.
void Parser::findPath(PieceExpression& piece) {
    if (!piece.isItem() || !piece.container || piece.path.slot >= 0)
        return;
    const auto localSlot = [](const Expression& expression) {
        if (expression.kind != ExpressionKind::Variable)
            return -1;
        const auto& variable = static_cast<const VariableExpression&>(expression);
        return variable.isGlobal ? -1 : variable.slot;
    };
    ItemStep step{.slot = localSlot(*piece.selection.first)};
    if (piece.selection.first->kind == ExpressionKind::Literal) {
        const Value& literal = static_cast<const LiteralExpression*>(piece.selection.first)->value;
        step.constant = literal.is(Kind::Integer) ? literal.asInteger() : 0;
    }
    if (step.slot < 0 && step.constant < 1)
        return;
    ItemPath path{.slot = localSlot(*piece.container)};
    if (piece.container->kind == ExpressionKind::Piece) {
        auto& inner = static_cast<PieceExpression&>(*piece.container);
        findPath(inner);
        path = inner.path;
    }
    if (path.slot < 0)
        return;
    path.steps.push_back(step);
    piece.path = std::move(path);
}

void Parser::dropUnusedResults(Handler& handler) const {
    if (!m_usesResult && leaves(handler.body))
        dropResults(handler.body);
}

// Statements

void Parser::parseScript() {
    for (skipNewLines(); !token().is(TokenKind::End); skipNewLines()) {
        if (token().is(Keyword::On) || (token().is(Keyword::To) && token(1).is(TokenKind::Word))) {
            parseHandler();
        } else if (token().is(Keyword::Property)) {
            parseProperty();
        } else if (m_hasRun && !token().is(Keyword::Global)) {
            failExpecting("“on”, “property” or end of script");
        } else if (Statement* statement = parseStatement()) {
            m_program->main.body.push_back(statement);
        }
        expectEndOfLine();
    }
    if (!m_hasRun)
        m_program->main.slotNames = m_scope.names;
}

void Parser::parseHandler() {
    take();
    const bool isRun = isWord("run");
    if (!isRun && !isIdentifier())
        failExpecting("identifier");
    const SourceRange begin = token().range;
    const QString name = take().text;
    auto handler = std::make_unique<Handler>();
    handler->name = name;
    if (isRun && (m_hasRun || !m_program->main.body.empty()))
        fail(begin, QStringLiteral("The run handler is specified more than once."));

    Scope scope;
    scope.isMain = isRun;
    std::swap(scope, m_scope);
    if (accept(TokenKind::LeftParenthesis)) {
        while (!token().is(TokenKind::RightParenthesis)) {
            if (!isIdentifier())
                failExpecting("identifier");
            const Token parameter = take();
            m_scope.locals.insert(parameter.text.toLower());
            handler->parameters.push_back(makeVariable(parameter)->slot);
            if (!accept(TokenKind::Comma))
                break;
        }
        expect(TokenKind::RightParenthesis, "“)”");
    } else if (!isRun) {
        failExpecting("“(”");
    }
    expectEndOfLine();
    handler->body = parseBlock();
    expect(Keyword::End, "“end”");
    if (token().is(TokenKind::Word) && token().text.compare(name, Qt::CaseInsensitive) != 0)
        fail(token().range, QStringLiteral("Expected “%1” but found %2.").arg(name, token().description()));
    accept(TokenKind::Word);
    handler->slotNames = m_scope.names;
    std::swap(scope, m_scope);
    if (isRun) {
        m_hasRun = true;
        m_program->main = std::move(*handler);
    } else {
        m_program->handlers.push_back(std::move(handler));
    }
}

void Parser::parseProperty() {
    take();
    if (!isIdentifier())
        failExpecting("identifier");
    const QString name = take().text;
    expect(TokenKind::Colon, "“:”");
    const QString key = name.toLower();
    if (!m_globals.contains(key)) {
        m_globals.insert(key, static_cast<int>(m_program->globalNames.size()));
        m_program->globalNames.push_back(name);
    }
    m_properties.insert(key);
    m_program->properties.emplace_back(m_globals.value(key), parseExpression());
}

void Parser::parseDeclaration(bool isGlobal) {
    take();
    do {
        if (!isIdentifier())
            failExpecting("identifier");
        const QString name = take().text;
        const QString key = name.toLower();
        if (!isGlobal) {
            m_scope.locals.insert(key);
        } else {
            if (!m_globals.contains(key)) {
                m_globals.insert(key, static_cast<int>(m_program->globalNames.size()));
                m_program->globalNames.push_back(name);
            }
            m_scope.globals.insert(key);
        }
    } while (accept(TokenKind::Comma));
}

bool Parser::atBlockEnd() {
    const Token& next = token();
    return next.is(TokenKind::End) || next.is(Keyword::Else) ||
           (next.is(Keyword::On) && token(1).is(Keyword::Error)) ||
           (next.is(Keyword::End) && !token(1).is(Keyword::Of) && !token(1).is(Keyword::In));
}

Block Parser::parseBlock() {
    const Nesting nesting(*this);
    Block block;
    for (skipNewLines(); !atBlockEnd(); skipNewLines()) {
        if (Statement* statement = parseStatement())
            block.push_back(statement);
        expectEndOfLine();
    }
    return block;
}

/// The one statement of `if … then …` and `tell … to …`.
Block Parser::parseLine() {
    Block block;
    if (Statement* statement = parseStatement())
        block.push_back(statement);
    return block;
}

/// `end`, and the word after it when there is one.
void Parser::expectEnd(const char* word) {
    expect(Keyword::End, "“end”");
    if (token().is(TokenKind::Word) && !acceptWord(word))
        failExpecting((QByteArrayLiteral("“") + word + QByteArrayLiteral("”")).constData());
}

/// A declaration is no statement: null.
Statement* Parser::parseStatement() {
    const Nesting nesting(*this);
    const SourceRange begin = token().range;
    Statement* statement = nullptr;
    switch (token().keyword) {
    case Keyword::Global:
    case Keyword::Local:
        parseDeclaration(token().is(Keyword::Global));
        return nullptr;
    case Keyword::Set:
        statement = parseSet();
        break;
    case Keyword::Copy:
        statement = parseCopy();
        break;
    case Keyword::If:
        statement = parseIf();
        break;
    case Keyword::Repeat:
        statement = parseRepeat();
        break;
    case Keyword::Return:
        statement = parseReturn();
        break;
    case Keyword::Tell:
        statement = parseTell();
        break;
    case Keyword::Try:
        statement = parseTry();
        break;
    case Keyword::Error:
        statement = parseError();
        break;
    case Keyword::Considering:
    case Keyword::Ignoring:
        statement = parseConsidering();
        break;
    case Keyword::With:
        statement = parseTimeout();
        break;
    case Keyword::Exit:
        take();
        accept(Keyword::Repeat);
        statement = make<Statement>(begin, StatementKind::Exit);
        break;
    default:
        statement = areWords({"using", "terms", "from"}) ? parseUsingTerms() : parseExpressionStatement();
        break;
    }
    finish(*statement);
    return statement;
}

Statement* Parser::parseExpressionStatement() {
    auto* statement = make<ExpressionStatement>(token().range);
    accept(Keyword::Get);
    statement->expression = parseExpression();
    hold(*statement, statement->expression);
    return statement;
}

Statement* Parser::parseSet() {
    auto* statement = make<AssignmentStatement>(take().range, StatementKind::Set);
    statement->target = parseReference();
    expect(Keyword::To, "“to”");
    statement->value = parseExpression();
    return statement;
}

Statement* Parser::parseCopy() {
    auto* statement = make<AssignmentStatement>(take().range, StatementKind::Copy);
    statement->value = parseExpression();
    expect(Keyword::To, "“to”");
    statement->target = parseReference();
    return statement;
}

Statement* Parser::parseIf() {
    auto* statement = make<IfStatement>(take().range);
    Expression* condition = parseExpression();
    accept(Keyword::Then);
    if (!token().is(TokenKind::NewLine)) {
        // In one line: if … then … else …
        statement->branches.emplace_back(condition, parseLine());
        if (accept(Keyword::Else)) {
            statement->hasElse = true;
            statement->otherwise = parseLine();
        }
        return statement;
    }
    statement->branches.emplace_back(condition, parseBlock());
    while (accept(Keyword::Else)) {
        if (accept(Keyword::If)) {
            condition = parseExpression();
            accept(Keyword::Then);
            statement->branches.emplace_back(condition, parseBlock());
        } else {
            statement->hasElse = true;
            statement->otherwise = parseBlock();
            break;
        }
    }
    expectEnd("if");
    return statement;
}

Statement* Parser::parseRepeat() {
    const SourceRange begin = take().range;
    RepeatStatement* statement = nullptr;
    if (token().is(Keyword::With))
        return parseRepeatWith(begin);
    if (token().is(TokenKind::NewLine)) {
        statement = make<RepeatStatement>(begin, StatementKind::Repeat);
    } else if (token().is(Keyword::While) || token().is(Keyword::Until)) {
        statement = make<RepeatStatement>(begin, StatementKind::RepeatWhile);
        statement->until = take().is(Keyword::Until);
        statement->from = parseExpression();
    } else {
        statement = make<RepeatStatement>(begin, StatementKind::RepeatTimes);
        statement->from = parseExpression();
        accept(Keyword::Times);
    }
    expectEndOfLine();
    statement->body = parseBlock();
    expectEnd("repeat");
    return statement;
}

Statement* Parser::parseRepeatWith(const SourceRange& begin) {
    take();
    VariableExpression* variable = parseVariable();
    const bool isCounting = token().is(Keyword::From);
    auto* statement =
        make<RepeatStatement>(begin, isCounting ? StatementKind::RepeatCounting : StatementKind::RepeatIn);
    statement->variable = variable;
    if (isCounting) {
        take();
        statement->from = parseExpression();
        expect(Keyword::To, "“to”");
        statement->to = parseExpression();
        if (accept(Keyword::By))
            statement->by = parseExpression();
    } else {
        expect(Keyword::In, "“from” or “in”");
        statement->from = parseExpression();
    }
    expectEndOfLine();
    statement->body = parseBlock();
    expectEnd("repeat");
    return statement;
}

VariableExpression* Parser::parseVariable() {
    if (!isIdentifier())
        failExpecting("identifier");
    return makeVariable(take());
}

Statement* Parser::parseReturn() {
    auto* statement = make<ReturnStatement>(take().range);
    if (startsExpression())
        statement->value = parseExpression();
    return statement;
}

Statement* Parser::parseTell() {
    auto* statement = make<TellStatement>(take().range);
    statement->target = parseExpression();
    const Terminology* outer = m_terminology;
    if (statement->target->kind == ExpressionKind::ApplicationNamed) {
        const auto* named = static_cast<const ApplicationExpression*>(statement->target)->name;
        if (named->kind == ExpressionKind::Literal) {
            const QString name = requireText(static_cast<const LiteralExpression*>(named)->value);
            m_terminology = m_applications.terminology(name);
            if (!m_terminology)
                fail(statement->target->range, QStringLiteral("Can’t get application \"%1\".").arg(name),
                     errors::NoSuchObject);
        }
    }
    if (accept(Keyword::To)) {
        statement->body = parseLine();
    } else {
        expectEndOfLine();
        statement->body = parseBlock();
        expectEnd("tell");
    }
    m_terminology = outer;
    return statement;
}

Statement* Parser::parseTry() {
    auto* statement = make<TryStatement>(take().range);
    expectEndOfLine();
    statement->body = parseBlock();
    if (accept(Keyword::On)) {
        expect(Keyword::Error, "“error”");
        if (isIdentifier() && !isWord("number"))
            statement->message = parseVariable();
        for (;;) {
            if (isWord("number")) {
                take();
                statement->number = parseVariable();
            } else if (token().is(Keyword::From) || token().is(Keyword::To)) {
                take();
                parseVariable();
            } else if (areWords({"partial", "result"})) {
                skip(2);
                parseVariable();
            } else {
                break;
            }
        }
        expectEndOfLine();
        statement->onError = parseBlock();
    }
    expect(Keyword::End, "“end”");
    if (!acceptWord("try") && !acceptWord("error") && token().is(TokenKind::Word))
        failExpecting("“try”");
    return statement;
}

Statement* Parser::parseError() {
    auto* statement = make<ErrorStatement>(take().range);
    if (!isWord("number") && startsExpression())
        statement->message = parseExpression();
    if (acceptWord("number"))
        statement->number = parseExpression();
    return statement;
}

Statement* Parser::parseConsidering() {
    auto* statement = make<ConsideringStatement>(token().range);
    bool considers = token().is(Keyword::Considering);
    const char* word = considers ? "considering" : "ignoring";
    for (take(); !token().is(TokenKind::NewLine) && !token().is(TokenKind::End);) {
        if (token().is(Keyword::Considering) || token().is(Keyword::Ignoring)) {
            considers = take().is(Keyword::Considering);
        } else if (acceptWord("case")) {
            statement->changesCase = true;
            statement->considersCase = considers;
        } else if (!accept(TokenKind::Comma) && !accept(Keyword::And) && !accept(Keyword::But) &&
                   !acceptWord("diacriticals") && !acceptWord("hyphens") && !acceptWord("punctuation") &&
                   !acceptWord("white") && !acceptWord("space") && !acceptWord("numeric") &&
                   !acceptWord("strings")) {
            failExpecting("“case” or another attribute");
        }
    }
    statement->body = parseBlock();
    expectEnd(word);
    return statement;
}

Statement* Parser::parseTimeout() {
    auto* statement = make<GroupStatement>(take().range);
    if (!acceptWord("timeout"))
        failExpecting("“timeout”");
    expect(Keyword::Of, "“of”");
    parseExpression();
    if (!acceptWord("seconds") && !acceptWord("second"))
        failExpecting("“seconds”");
    expectEndOfLine();
    statement->body = parseBlock();
    expectEnd("timeout");
    return statement;
}

Statement* Parser::parseUsingTerms() {
    auto* statement = make<GroupStatement>(token().range);
    skip(3);
    if (!acceptWord("application") && !acceptWord("app"))
        failExpecting("“application”");
    if (!token().is(TokenKind::Text))
        failExpecting("text");
    const Token name = take();
    const Terminology* outer = std::exchange(m_terminology, m_applications.terminology(name.text));
    if (!m_terminology)
        fail(name.range, QStringLiteral("Can’t get application \"%1\".").arg(name.text),
             errors::NoSuchObject);
    expectEndOfLine();
    statement->body = parseBlock();
    expect(Keyword::End, "“end”");
    if (areWords({"using", "terms", "from"}))
        skip(3);
    m_terminology = outer;
    return statement;
}

} // namespace tarnwick::script
