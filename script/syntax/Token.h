#pragma once

#include "script/values/Error.h"
#include "script/values/Keyword.h"

#include <QString>

namespace tarnwick::script {

enum class TokenKind : quint8 {
    End,
    NewLine,
    Word,       // a reserved word, an identifier or a word of a terminology
    BarredName, // |any name|, without the bars
    Integer,
    Real,
    Text,
    LeftParenthesis,
    RightParenthesis,
    LeftBrace,
    RightBrace,
    Comma,
    Colon,
    Possessive, // 's
    Ampersand,
    Plus,
    Minus,
    Times,
    Divide,
    Power,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
};

/// The smallest piece of a script's text that means something.
struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
    SourceRange range = {};
    QString text = {}; ///< words and names as written, texts without quotes and escapes
    qint64 integer = 0;
    double real = 0.0;

    bool is(TokenKind wanted) const { return kind == wanted; }
    bool is(Keyword wanted) const { return keyword == wanted; }
    /// How an error message calls it: "identifier", "end of line", "“then”".
    QString description() const;
};

} // namespace tarnwick::script
