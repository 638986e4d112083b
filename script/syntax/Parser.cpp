#include "script/syntax/Parser.h"

#include "script/values/Application.h"
#include "script/values/Coercion.h"

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
    m_scope.isMain = m_scope.isTopLevel = true;
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

/// `of`, or `in` for it.
bool Parser::isOf(std::size_t ahead) {
    return token(ahead).is(Keyword::Of) || (token(ahead).is(Keyword::In) && !m_referencesEndAtIn);
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
    QString message =
        QStringLiteral("Expected %1 but found %2.").arg(QString::fromUtf8(what), found.description());
    if (m_terminology == &standardTerminology())
        message +=
            QStringLiteral(" An application’s own words need its name in the “tell”, or “using terms from”.");
    fail(range, message);
}

/// The words that every application knows.
const Terminology& Parser::standardTerminology() {
    static const Terminology terminology;
    return terminology;
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

} // namespace tarnwick::script
