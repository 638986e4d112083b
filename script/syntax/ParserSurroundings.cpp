#include "script/syntax/Parser.h"
#include "script/values/Application.h"
#include "script/values/Coercion.h"

namespace tarnwick::script {

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
        } else if (!m_terminology) {
            // Which application it is shows when the script runs: until then the words that all of them know.
            m_terminology = &standardTerminology();
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
        } else if (areWords({"application", "responses"})) {
            skip(2);
            statement->changesResponses = true;
            statement->ignoresResponses = !considers;
        } else if (!accept(TokenKind::Comma) && !accept(Keyword::And) && !accept(Keyword::But) &&
                   !acceptIgnoredAttribute()) {
            failExpecting("“case” or another attribute");
        }
    }
    statement->body = parseBlock();
    expectEnd(word);
    return statement;
}

/// What the language can consider and this one always does.
bool Parser::acceptIgnoredAttribute() {
    for (const char* word :
         {"diacriticals", "hyphens", "punctuation", "white", "space", "numeric", "strings"}) {
        if (acceptWord(word))
            return true;
    }
    return false;
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
