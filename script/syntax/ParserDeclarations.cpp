#include "script/syntax/Parser.h"

namespace tarnwick::script {

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
    scope.globals = m_scriptGlobals;
    std::swap(scope, m_scope);
    if (accept(TokenKind::LeftParenthesis)) {
        while (!token().is(TokenKind::RightParenthesis)) {
            if (!isIdentifier())
                failExpecting("identifier");
            const Token parameter = take();
            m_scope.locals.insert(parameter.text.toLower());
            m_scope.globals.remove(parameter.text.toLower());
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
            m_scope.globals.remove(key);
        } else {
            if (!m_globals.contains(key)) {
                m_globals.insert(key, static_cast<int>(m_program->globalNames.size()));
                m_program->globalNames.push_back(name);
            }
            m_scope.globals.insert(key);
            if (m_scope.isTopLevel)
                m_scriptGlobals.insert(key);
        }
    } while (accept(TokenKind::Comma));
}

} // namespace tarnwick::script
