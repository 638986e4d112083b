#include "script/syntax/Parser.h"

namespace tarnwick::script {

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
        statement = parseExit();
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
    parseRepeatBody(*statement);
    return statement;
}

void Parser::parseRepeatBody(RepeatStatement& statement) {
    expectEndOfLine();
    ++m_scope.loops;
    statement.body = parseBlock();
    --m_scope.loops;
    expectEnd("repeat");
}

Statement* Parser::parseExit() {
    auto* statement = make<Statement>(take().range, StatementKind::Exit);
    accept(Keyword::Repeat);
    finish(*statement);
    if (m_scope.loops == 0)
        fail(statement->range, QStringLiteral("Expected “repeat” around “exit repeat”."));
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
    parseRepeatBody(*statement);
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

Statement* Parser::parseTry() {
    auto* statement = make<TryStatement>(take().range);
    expectEndOfLine();
    statement->body = parseBlock();
    if (accept(Keyword::On)) {
        expect(Keyword::Error, "“error”");
        accept(Keyword::The);
        if (isIdentifier() && !isWord("number"))
            statement->message = parseVariable();
        for (;;) {
            if (acceptWord("number")) {
                if (token().is(TokenKind::Integer) || token().is(TokenKind::Minus))
                    statement->onlyNumber = parseIndexOperand();
                else
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

} // namespace tarnwick::script
