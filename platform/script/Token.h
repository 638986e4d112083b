#pragma once

#include "platform/script/Error.h"

#include <QString>

namespace tarnwick::script {

/// The language's reserved words. An application's terminology may use them inside of its phrases.
enum class Keyword : quint8 {
    None, // an identifier, or a word of a terminology
    And,
    As,
    Back,
    Beginning,
    Begins,
    But,
    By,
    Comes,
    Considering,
    Contains,
    Copy,
    Div,
    Does,
    Doesnt, // doesn't
    Else,
    End,
    Ends,
    Equal,
    Equals,
    Error,
    Every,
    Exit,
    False,
    First,
    Second,
    Third,
    Fourth,
    Fifth,
    Sixth,
    Seventh,
    Eighth,
    Ninth,
    Tenth,
    From,
    Front,
    Get,
    Given,
    Global,
    Greater,
    If,
    Ignoring,
    In,
    Is,
    Isnt, // isn't
    It,
    Its,
    Last,
    Less,
    Local,
    Me,
    Middle,
    Mod,
    My,
    Not,
    Of,
    On,
    Or,
    Property,
    Repeat,
    Return,
    Script,
    Set,
    Some,
    Starts,
    Tell,
    Than,
    That,
    The,
    Then,
    Thru,
    Times,
    To,
    True,
    Try,
    Until,
    Where,
    While,
    Whose,
    With,
    Without,
};

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

/// The reserved word that `word` is, letter case aside; None for any other.
Keyword keywordOf(const QString& word);
inline bool isReservedWord(const QString& word) { return keywordOf(word) != Keyword::None; }

} // namespace tarnwick::script
