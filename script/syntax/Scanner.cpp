#include "script/syntax/Scanner.h"

#include <QLocale>

#include <cmath>
#include <utility>

namespace tarnwick::script {

namespace {

bool isWordStart(QChar letter) { return letter.isLetter() || letter == QLatin1Char('_'); }

bool isWordPart(QChar letter) { return isWordStart(letter) || letter.isDigit(); }

bool isDigit(QChar letter) { return letter >= QLatin1Char('0') && letter <= QLatin1Char('9'); }

bool isLineBreak(QChar letter) {
    return letter == QLatin1Char('\n') || letter == QLatin1Char('\r') || letter == QChar::LineSeparator ||
           letter == QChar::ParagraphSeparator;
}

bool isBlank(QChar letter) {
    return letter == QLatin1Char(' ') || letter == QLatin1Char('\t') || letter == QChar::Nbsp;
}

constexpr QChar ContinuationMark(0x00ac); // ¬

struct Symbol {
    const char16_t* text;
    TokenKind kind;
};

// The longer of two that begin alike stands first.
constexpr Symbol Symbols[] = {
    {u"(", TokenKind::LeftParenthesis},
    {u")", TokenKind::RightParenthesis},
    {u"{", TokenKind::LeftBrace},
    {u"}", TokenKind::RightBrace},
    {u",", TokenKind::Comma},
    {u":", TokenKind::Colon},
    {u"&", TokenKind::Ampersand},
    {u"+", TokenKind::Plus},
    {u"-", TokenKind::Minus},
    {u"*", TokenKind::Times},
    {u"/=", TokenKind::NotEqual},
    {u"/", TokenKind::Divide},
    {u"÷", TokenKind::Divide},
    {u"^", TokenKind::Power},
    {u"=", TokenKind::Equal},
    {u"≠", TokenKind::NotEqual},
    {u"<=", TokenKind::LessOrEqual},
    {u"≤", TokenKind::LessOrEqual},
    {u"<", TokenKind::Less},
    {u">=", TokenKind::GreaterOrEqual},
    {u"≥", TokenKind::GreaterOrEqual},
    {u">", TokenKind::Greater},
};

} // namespace

Token Scanner::next() {
    skipBlanks();
    const SourceRange begin = m_at;
    const QChar letter = peek();
    if (m_at.offset >= m_source.size())
        return finish(TokenKind::End, begin, {});
    if (isLineBreak(letter)) {
        advance();
        return finish(TokenKind::NewLine, begin, {});
    }
    if (isWordStart(letter))
        return scanWord();
    if (isDigit(letter) || (letter == QLatin1Char('.') && isDigit(peek(1))))
        return scanNumber();
    if (letter == QLatin1Char('"'))
        return scanText();
    if (letter == QLatin1Char('|'))
        return scanBarredName();
    return scanSymbol();
}

QChar Scanner::peek(qsizetype ahead) const {
    const qsizetype at = m_at.offset + ahead;
    return at < m_source.size() ? m_source[at] : QChar();
}

void Scanner::advance(qsizetype units) {
    for (; units > 0 && m_at.offset < m_source.size(); --units) {
        const QChar letter = peek();
        const bool isPair = letter == QLatin1Char('\r') && peek(1) == QLatin1Char('\n');
        ++m_at.offset;
        ++m_at.column;
        if (isPair)
            ++m_at.offset;
        if (isLineBreak(letter)) {
            ++m_at.line;
            m_at.column = 1;
        }
    }
}

void Scanner::skipBlanks() {
    for (;;) {
        const QChar letter = peek();
        if (isBlank(letter)) {
            advance();
        } else if (letter == QLatin1Char('#') ||
                   (letter == QLatin1Char('-') && peek(1) == QLatin1Char('-'))) {
            skipLineComment();
        } else if (letter == QLatin1Char('(') && peek(1) == QLatin1Char('*')) {
            skipBlockComment();
        } else if (letter != ContinuationMark || !skipContinuation()) {
            return;
        }
    }
}

void Scanner::skipLineComment() {
    while (m_at.offset < m_source.size() && !isLineBreak(peek()))
        advance();
}

void Scanner::skipBlockComment() {
    const SourceRange begin = m_at;
    int depth = 0;
    do {
        if (m_at.offset >= m_source.size())
            fail(begin, QStringLiteral("Expected “*)” but found end of script."));
        const QChar letter = peek();
        if (letter == QLatin1Char('(') && peek(1) == QLatin1Char('*')) {
            ++depth;
            advance(2);
        } else if (letter == QLatin1Char('*') && peek(1) == QLatin1Char(')')) {
            --depth;
            advance(2);
        } else {
            advance();
        }
    } while (depth > 0);
}

/// Skips the mark and the line break after it; false when something else follows.
bool Scanner::skipContinuation() {
    const SourceRange before = m_at;
    advance();
    while (isBlank(peek()))
        advance();
    if (!isLineBreak(peek())) {
        m_at = before;
        return false;
    }
    advance();
    return true;
}

SourceRange Scanner::rangeFrom(const SourceRange& begin) const {
    return {begin.line, begin.column, begin.offset, m_at.offset - begin.offset};
}

void Scanner::fail(const SourceRange& at, const QString& message) const {
    throw Error{errors::Syntax, message, rangeFrom(at)};
}

Token Scanner::scanWord() {
    const SourceRange begin = m_at;
    while (isWordPart(peek()))
        advance();
    QString word = m_source.mid(begin.offset, m_at.offset - begin.offset).toString();
    // The apostrophe of isn't and doesn't belongs to the word, that of 's does not.
    if ((peek() == QLatin1Char('\'') || peek() == QChar(0x2019)) && peek(1).toLower() == QLatin1Char('t') &&
        isReservedWord(word + QLatin1String("'t"))) {
        advance(2);
        word += QLatin1String("'t");
    }
    Token token = finish(TokenKind::Word, begin, word);
    token.keyword = keywordOf(word);
    return token;
}

Token Scanner::scanBarredName() {
    const SourceRange begin = m_at;
    QString name;
    for (advance(); peek() != QLatin1Char('|'); advance()) {
        if (m_at.offset >= m_source.size() || isLineBreak(peek()))
            fail(begin, QStringLiteral("Expected “|” but found end of line."));
        if (peek() == QLatin1Char('\\') && m_at.offset + 1 < m_source.size())
            advance();
        name += peek();
    }
    advance();
    return finish(TokenKind::BarredName, begin, name);
}

Token Scanner::scanNumber() {
    const SourceRange begin = m_at;
    bool isReal = false;
    while (isDigit(peek()))
        advance();
    if (peek() == QLatin1Char('.') && isDigit(peek(1))) {
        isReal = true;
        advance();
        while (isDigit(peek()))
            advance();
    }
    if (peek().toLower() == QLatin1Char('e')) {
        const bool isSigned = peek(1) == QLatin1Char('+') || peek(1) == QLatin1Char('-');
        if (isDigit(peek(isSigned ? 2 : 1))) {
            isReal = true;
            advance(isSigned ? 2 : 1);
            while (isDigit(peek()))
                advance();
        }
    }
    if (isWordStart(peek()))
        fail(begin, QStringLiteral("Expected end of line but found identifier."));
    Token token =
        finish(TokenKind::Integer, begin, m_source.mid(begin.offset, m_at.offset - begin.offset).toString());
    bool fits = false;
    if (!isReal)
        token.integer = token.text.toLongLong(&fits);
    if (!fits) {
        token.kind = TokenKind::Real;
        token.real = QLocale::c().toDouble(token.text);
        if (!std::isfinite(token.real))
            fail(begin, QStringLiteral("The number is too large."));
    }
    return token;
}

Token Scanner::scanText() {
    const SourceRange begin = m_at;
    QString text;
    for (advance(); peek() != QLatin1Char('"'); advance()) {
        if (m_at.offset >= m_source.size())
            fail(begin, QStringLiteral("Expected “\"” but found end of script."));
        if (peek() != QLatin1Char('\\')) {
            text += peek();
            continue;
        }
        advance();
        switch (peek().unicode()) {
        case '"':
        case '\\':
            text += peek();
            break;
        case 'n':
            text += QLatin1Char('\n');
            break;
        case 'r':
            text += QLatin1Char('\r');
            break;
        case 't':
            text += QLatin1Char('\t');
            break;
        default:
            fail(begin, QStringLiteral("Expected “\"” but found unknown token."));
        }
    }
    advance();
    return finish(TokenKind::Text, begin, text);
}

Token Scanner::scanSymbol() {
    const SourceRange begin = m_at;
    if ((peek() == QLatin1Char('\'') || peek() == QChar(0x2019)) && peek(1).toLower() == QLatin1Char('s') &&
        !isWordPart(peek(2))) {
        advance(2);
        return finish(TokenKind::Possessive, begin, QStringLiteral("'s"));
    }
    for (const Symbol& symbol : Symbols) {
        const QStringView text(symbol.text);
        if (m_source.mid(m_at.offset).startsWith(text)) {
            advance(text.size());
            return finish(symbol.kind, begin, text.toString());
        }
    }
    advance();
    fail(begin, QStringLiteral("Expected expression but found unknown token."));
}

Token Scanner::finish(TokenKind kind, const SourceRange& begin, const QString& text) const {
    Token token;
    token.kind = kind;
    token.range = rangeFrom(begin);
    token.text = text;
    return token;
}

} // namespace tarnwick::script
