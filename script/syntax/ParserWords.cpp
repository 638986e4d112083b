#include "script/syntax/Parser.h"
#include "script/values/Application.h"
#include "script/values/Cells.h"
#include "script/values/Classes.h"

namespace tarnwick::script {

namespace {

/// Reserved only beside an operator: anywhere else a name like any other.
bool isSoft(Keyword keyword) {
    switch (keyword) {
    case Keyword::But:
    case Keyword::Comes:
    case Keyword::Equal:
    case Keyword::Given:
    case Keyword::Greater:
    case Keyword::Less:
    case Keyword::Starts:
    case Keyword::Begins:
    case Keyword::Than:
    case Keyword::Times:
        return true;
    default:
        return false;
    }
}

/// The names of classes when they stand alone: `class of x is text`.
constexpr std::pair<const char*, Term> ClassNames[] = {
    {"text", classes::Text},   {"string", classes::Text},      {"integer", classes::Integer},
    {"real", classes::Real},   {"number", classes::Number},    {"boolean", classes::Boolean},
    {"list", classes::List},   {"record", classes::Record},    {"data", classes::Data},
    {"alias", classes::Alias}, {"constant", classes::Constant}};

} // namespace

/// What the language calls by a word that no application may take; no node for any other word.
Parser::Link Parser::parseBuiltinWord() {
    const SourceRange begin = token().range;
    PieceClass piece = {};
    int words = 0;
    if (matchPiece(piece, words))
        return parsePiece(piece, words);
    if (Expression* reference = parseReferenceTo())
        return {reference, nullptr};
    if (areWords({"button", "returned"}) || areWords({"text", "returned"})) {
        auto* field = make<FieldExpression>(begin);
        field->name = take().text;
        field->name += QLatin1Char(' ') + take().text;
        return {field, &field->container};
    }
    if (areWords({"count"}) || areWords({"number", "of"}))
        return parseCount();
    if (Expression* command = parseStandardCommand())
        return {command, nullptr};
    if (isWord("result")) {
        m_usesResult = true;
        return {make<Expression>(take().range, ExpressionKind::Result), nullptr};
    }
    if (isWord("exists")) {
        auto* exists = make<ExistsExpression>(take().range);
        exists->operand = parseReference();
        hold(*exists, exists->operand);
        return {exists, nullptr};
    }
    if (areWords({"AppleScript"}) || areWords({"current", "application"})) {
        skip(isWord("current") ? 2 : 1);
        return {make<Expression>(begin, ExpressionKind::Script), nullptr};
    }
    if (areWords({"application", "id"}))
        refuseUnsupported();
    if ((isWord("application") || isWord("app")) &&
        (token(1).is(TokenKind::Text) || token(1).is(TokenKind::LeftParenthesis) ||
         (isIdentifier(1) && !isWord("id", 1) && !matchPhrase(1).entry))) {
        take();
        auto* application = make<ApplicationExpression>(begin);
        application->name = parseIndexOperand();
        hold(*application, application->name);
        return {application, nullptr};
    }
    const bool isPosixFile = areWords({"POSIX", "file"});
    if (isPosixFile || (isWord("alias") && token(1).is(TokenKind::Text))) {
        skip(isPosixFile ? 2 : 1);
        auto* file = make<FileExpression>(begin);
        file->path = parseIndexOperand();
        hold(*file, file->path);
        return {file, nullptr};
    }
    return {};
}

/// What the language calls by a word unless an application means something else by it.
Parser::Link Parser::parseBuiltinName(bool isOwned) {
    Builtin property = {};
    int words = 0;
    if (matchBuiltinProperty(property, words, isOwned))
        return parseBuiltinProperty(property, words);
    const bool isCalled = token(1).is(TokenKind::LeftParenthesis) && (!isWord("round") || definesRound());
    if (isCalled || m_scope.slots_.contains(token().text.toLower()))
        return {};
    if (!isOwned && isWord("round")) {
        const Token round = take();
        const bool isCommand = startsExpression();
        m_tokens.push_front(round);
        if (isCommand)
            return {parseRound(), nullptr};
    }
    if (!isOwned && isWord("offset") && token(1).is(Keyword::Of))
        return {parseOffset(), nullptr};
    static constexpr std::pair<const char*, const char16_t*> texts[] = {
        {"quote", u"\""}, {"space", u" "}, {"tab", u"\t"}, {"linefeed", u"\n"}};
    for (const auto& [name, text] : texts) {
        if (isWord(name))
            return {makeText(take().range, QString::fromUtf16(text)), nullptr};
    }
    for (const auto& [name, code] : ClassNames) {
        if (isWord(name))
            return {makeConstant(take().range, code, classNameOf(code)), nullptr};
    }
    return {};
}

Parser::Link Parser::parseBuiltinProperty(Builtin property, int words) {
    auto* node = make<BuiltinPropertyExpression>(token().range);
    node->property = property;
    skip(words);
    return {node, &node->container};
}

/// `count x`, `count of x`, `number of x`; also `count every x of y`.
Parser::Link Parser::parseCount() {
    auto* count = make<CountExpression>(token().range);
    take();
    accept(Keyword::Of);
    count->operand = parseReference();
    hold(*count, count->operand);
    return {count, nullptr};
}

Parser::Link Parser::parsePiece(PieceClass piece, int words) {
    auto* part = make<PieceExpression>(token().range);
    m_pieces.push_back(part);
    part->piece = piece;
    const bool isPlural =
        token(static_cast<std::size_t>(words) - 1).text.endsWith(QLatin1Char('s'), Qt::CaseInsensitive);
    skip(words);
    if (!isPlural && !startsIndex())
        failExpecting("index");
    parseIndex(part->selection);
    return {part, &part->container};
}

/// The longest run of words from here that the terminology knows.
Parser::Phrase Parser::matchPhrase(std::size_t ahead) {
    Phrase found;
    if (!m_terminology || !token(ahead).is(TokenKind::Word))
        return found;
    const int longest = m_terminology->longestPhrase(token(ahead).text);
    QString words;
    for (int count = 1; count <= longest; ++count) {
        const Token& word = token(ahead + static_cast<std::size_t>(count) - 1);
        if (!word.is(TokenKind::Word))
            break;
        words += (count > 1 ? QStringLiteral(" ") : QString()) + word.text;
        if (const Terminology::Entry* entry = m_terminology->find(words))
            found = {entry, count, words};
    }
    return found;
}

bool Parser::matchPiece(PieceClass& piece, int& words) {
    static constexpr std::pair<const char*, PieceClass> names[] = {
        {"item", PieceClass::Item},           {"items", PieceClass::Item},
        {"character", PieceClass::Character}, {"characters", PieceClass::Character},
        {"word", PieceClass::Word},           {"words", PieceClass::Word},
        {"paragraph", PieceClass::Paragraph}, {"paragraphs", PieceClass::Paragraph},
    };
    words = 1;
    for (const auto& [name, value] : names) {
        if (isWord(name)) {
            piece = value;
            return true;
        }
    }
    if (isWord("text") && (isWord("item", 1) || isWord("items", 1)) && !isWord("delimiters", 2)) {
        piece = PieceClass::TextItem;
        words = 2;
        return true;
    }
    if (isWord("text") && (token(1).is(TokenKind::Integer) || token(1).is(TokenKind::Minus) ||
                           token(1).is(TokenKind::LeftParenthesis) || token(1).is(Keyword::From))) {
        piece = PieceClass::Text;
        return true;
    }
    return false;
}

/// A class of the language's own values, of which a list may have some: `every integer of x`.
bool Parser::matchItemClass(Term& itemClass) {
    for (const auto& [name, code] : ClassNames) {
        if (isWord(name)) {
            itemClass = code;
            return true;
        }
    }
    return false;
}

/// Fails at what the language elsewhere has and this one does not, by its name. Two names beside each other
/// never mean anything else.
void Parser::refuseUnsupported() {
    static constexpr std::initializer_list<const char*> phrases[] = {
        {"application", "id"}, {"choose", "file"},   {"choose", "folder"},        {"choose", "from", "list"},
        {"current", "date"},   {"display", "alert"}, {"display", "notification"}, {"do", "shell", "script"},
        {"load", "script"},    {"open", "location"}, {"random", "number"},        {"run", "script"},
        {"store", "script"},   {"system", "info"},
    };
    const Token& next = token(1);
    if (!next.is(TokenKind::Word) ||
        (next.keyword != Keyword::None && !next.is(Keyword::From) && !next.is(Keyword::Script)))
        return; // as nearly always
    for (const auto& words : phrases) {
        if (!areWords(words))
            continue;
        QStringList named;
        for (const char* word : words)
            named += QString::fromLatin1(word);
        fail(token().range, QStringLiteral("“%1” is not supported.").arg(named.join(QLatin1Char(' '))));
    }
}

bool Parser::matchBuiltinProperty(Builtin& property, int& words, bool isOwned) {
    if (areWords({"POSIX", "path"}) || areWords({"quoted", "form"})) {
        property = isWord("POSIX") ? Builtin::PosixPath : Builtin::QuotedForm;
        words = 2;
        return true;
    }
    if (areWords({"text", "item", "delimiters"})) {
        property = Builtin::TextItemDelimiters;
        words = 3;
        return true;
    }
    // Without an `of` these are names that a script may well use for itself.
    const std::optional<Builtin> named =
        token().is(TokenKind::Word) && (isOf(1) || isOwned) ? builtinNamed(token().text) : std::nullopt;
    if (named) {
        property = *named;
        words = 1;
    }
    return named.has_value();
}

std::optional<Builtin> Parser::builtinNamed(const QString& name) {
    static constexpr std::pair<const char*, Builtin> names[] = {
        {"class", Builtin::Class}, {"length", Builtin::Length},   {"contents", Builtin::Contents},
        {"rest", Builtin::Rest},   {"reverse", Builtin::Reverse},
    };
    for (const auto& [word, property] : names) {
        if (name.compare(QLatin1String(word), Qt::CaseInsensitive) == 0)
            return property;
    }
    return {};
}

bool Parser::isIdentifier(std::size_t ahead) {
    const Token& candidate = token(ahead);
    return candidate.is(TokenKind::BarredName) ||
           (candidate.is(TokenKind::Word) && (candidate.is(Keyword::None) || isSoft(candidate.keyword)));
}

} // namespace tarnwick::script
