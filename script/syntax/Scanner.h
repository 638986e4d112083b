#pragma once

#include "script/syntax/Token.h"

#include <QStringView>

namespace tarnwick::script {

/// Cuts a script's text into tokens, one at a time. Comments and continued lines are gone; line breaks are
/// tokens.
class Scanner {
public:
    /// `source` outlives the scanner.
    explicit Scanner(QStringView source) : m_source(source) {}

    /// The next token, at the end `TokenKind::End` again and again. Throws error -2741 at what is no token.
    Token next();

private:
    QChar peek(qsizetype ahead = 0) const;
    void advance(qsizetype units = 1);
    void skipBlanks();
    void skipLineComment();
    void skipBlockComment();
    bool skipContinuation();
    SourceRange rangeFrom(const SourceRange& begin) const;
    [[noreturn]] void fail(const SourceRange& at, const QString& message) const;

    Token scanWord();
    Token scanBarredName();
    Token scanNumber();
    Token scanText();
    Token scanSymbol();
    Token finish(TokenKind kind, const SourceRange& begin, const QString& text) const;

    QStringView m_source;
    SourceRange m_at = {1, 1, 0, 0};
};

} // namespace tarnwick::script
