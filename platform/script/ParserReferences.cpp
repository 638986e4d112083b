#include "platform/script/Application.h"
#include "platform/script/Classes.h"
#include "platform/script/Parser.h"

#include <algorithm>
#include <optional>

namespace tarnwick::script {

namespace {

/// first, second … tenth, last, front, back; 0 for any other word.
int ordinalOf(Keyword keyword) {
    if (keyword >= Keyword::First && keyword <= Keyword::Tenth)
        return static_cast<int>(keyword) - static_cast<int>(Keyword::First) + 1;
    if (keyword == Keyword::Front)
        return 1;
    return keyword == Keyword::Last || keyword == Keyword::Back ? -1 : 0;
}

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

bool isElement(const Expression& expression) { return expression.kind == ExpressionKind::Element; }

/// A property of the element that a `whose` is about: one without a container of its own.
const TermPropertyExpression* ownProperty(const Expression& expression) {
    if (expression.kind != ExpressionKind::TermProperty)
        return nullptr;
    const auto& property = static_cast<const TermPropertyExpression&>(expression);
    return !property.container || property.container->kind == ExpressionKind::Target ? &property : nullptr;
}

/// The operator that says the same with the sides exchanged.
std::optional<Filter::Operator> mirrored(Filter::Operator op) {
    switch (op) {
    case Filter::Operator::Equal:
        return Filter::Operator::Equal;
    case Filter::Operator::Less:
        return Filter::Operator::Greater;
    case Filter::Operator::LessOrEqual:
        return Filter::Operator::GreaterOrEqual;
    case Filter::Operator::Greater:
        return Filter::Operator::Less;
    case Filter::Operator::GreaterOrEqual:
        return Filter::Operator::LessOrEqual;
    case Filter::Operator::Contains:
        return Filter::Operator::IsIn;
    case Filter::Operator::IsIn:
        return Filter::Operator::Contains;
    default:
        return {};
    }
}

} // namespace

/// `a of b of c`, with `whose` and `exists` behind it.
Expression* Parser::parseReference() {
    const SourceRange begin = token().range;
    std::vector<Link> links{parseLink()};
    while (links.back().container && (token().is(Keyword::Of) || token().is(Keyword::In))) {
        if (links.size() > MaximumDepth)
            fail(begin, QStringLiteral("Stack overflow."), errors::StackOverflow);
        take();
        links.push_back(parseLink());
    }
    const SourceRange end = m_lastRange;
    for (std::size_t i = links.size() - 1; i-- > 0;) {
        *links[i].container = links[i + 1].node;
        hold(*links[i].node, links[i + 1].node);
        links[i].node->range.length = end.offset + end.length - links[i].node->range.offset;
    }
    attachCondition(links);
    Expression* whole = links.front().node;
    if (!acceptWord("exists"))
        return whole;
    auto* exists = make<ExistsExpression>(begin);
    exists->operand = whole;
    hold(*exists, whole);
    return exists;
}

/// The condition belongs to the last `every`, ordinal or plural of the chain; else to its first element.
void Parser::attachCondition(const std::vector<Link>& links) {
    const Keyword keyword = token().keyword;
    const bool isThat = keyword == Keyword::That && links.back().node;
    if (keyword != Keyword::Whose && keyword != Keyword::Where && !isThat)
        return;
    ElementExpression* element = nullptr;
    for (const Link& link : links) {
        if (!isElement(*link.node))
            continue;
        auto* candidate = static_cast<ElementExpression*>(link.node);
        const bool isChosenByWord = !candidate->selection.first || candidate->selectedByWord;
        if (!element || isChosenByWord)
            element = candidate;
    }
    if (!element || element->condition)
        failExpecting("end of line");
    take();
    element->condition = parseExpression();
    element->filter = makeFilter(element->condition);
    for (std::size_t i = links.size(); i-- > 0;) {
        if (links[i].node == element)
            hold(*element, element->condition);
        else if (i + 1 < links.size())
            hold(*links[i].node, links[i + 1].node);
        links[i].node->range.length = m_lastRange.offset + m_lastRange.length - links[i].node->range.offset;
    }
}

std::unique_ptr<FilterTemplate> Parser::makeFilter(Expression* condition) const {
    auto filter = std::make_unique<FilterTemplate>();
    const auto addOperands = [this, &filter](std::initializer_list<Expression*> operands) {
        return std::all_of(operands.begin(), operands.end(), [&](Expression* operand) {
            std::unique_ptr<FilterTemplate> made = makeFilter(operand);
            if (made)
                filter->operands.push_back(std::move(*made));
            return made != nullptr;
        });
    };
    bool isComplete = false;
    if (condition->kind == ExpressionKind::Logical) {
        const auto* logical = static_cast<const LogicalExpression*>(condition);
        filter->op = logical->isAnd ? Filter::Operator::And : Filter::Operator::Or;
        isComplete = addOperands({logical->left, logical->right});
    } else if (condition->kind == ExpressionKind::Not) {
        filter->op = Filter::Operator::Not;
        isComplete = addOperands({static_cast<const UnaryExpression*>(condition)->operand});
    } else if (condition->kind == ExpressionKind::Comparison) {
        return makeFilterLeaf(static_cast<const ComparisonExpression&>(*condition));
    } else if (const TermPropertyExpression* property = ownProperty(*condition)) {
        filter->op = Filter::Operator::Equal;
        filter->property = property->term;
        isComplete = true;
    }
    return isComplete ? std::move(filter) : nullptr;
}

std::unique_ptr<FilterTemplate> Parser::makeFilterLeaf(const ComparisonExpression& comparison) const {
    const TermPropertyExpression* left = ownProperty(*comparison.left);
    const TermPropertyExpression* right = ownProperty(*comparison.right);
    if ((left != nullptr) == (right != nullptr))
        return nullptr;
    const std::optional<Filter::Operator> op = left ? comparison.op : mirrored(comparison.op);
    if (!op)
        return nullptr;
    auto leaf = std::make_unique<FilterTemplate>();
    leaf->op = *op;
    leaf->property = (left ? left : right)->term;
    leaf->value = left ? comparison.right : comparison.left;
    if (!comparison.negated)
        return leaf;
    if (*op == Filter::Operator::Equal) {
        leaf->op = Filter::Operator::NotEqual;
        return leaf;
    }
    auto negation = std::make_unique<FilterTemplate>();
    negation->op = Filter::Operator::Not;
    negation->operands.push_back(std::move(*leaf));
    return negation;
}

/// One part of a chain, with the possessives behind it.
Parser::Link Parser::parseLink() {
    const Nesting nesting(*this);
    accept(Keyword::The);
    const bool isGroup = token().is(TokenKind::LeftParenthesis);
    Link link = parsePlainLink();
    if (!isGroup)
        finish(*link.node);
    while (accept(TokenKind::Possessive)) {
        Expression* owner = link.node;
        link = parseOwned(owner);
    }
    return link;
}

/// What belongs to `owner`: nothing may be asked of it by `of` any more.
Parser::Link Parser::parseOwned(Expression* owner) {
    Link link = parsePlainLink(true);
    if (!link.container)
        fail(link.node->range, QStringLiteral("Expected property but found expression."));
    *link.container = owner;
    hold(*link.node, owner);
    finish(*link.node);
    return {link.node, nullptr};
}

/// `isOwned`: it is somebody's, so that a plain name is not a variable.
Parser::Link Parser::parsePlainLink(bool isOwned) {
    const SourceRange begin = token().range;
    if (isOwned && !token().is(TokenKind::Word) && !token().is(TokenKind::BarredName))
        failExpecting("property");
    if (Expression* literal = parseLiteral())
        return {literal, nullptr};
    switch (token().keyword) {
    case Keyword::None:
        break;
    case Keyword::It:
        return {make<Expression>(take().range, ExpressionKind::Target), nullptr};
    case Keyword::Me:
        return {make<Expression>(take().range, ExpressionKind::Script), nullptr};
    case Keyword::Its:
        take();
        return parseOwned(make<Expression>(begin, ExpressionKind::Target));
    case Keyword::My:
        take();
        return parseOwned(make<Expression>(begin, ExpressionKind::Script));
    case Keyword::Every:
    case Keyword::Some:
    case Keyword::Middle:
        return parseSelected();
    case Keyword::End:
        if (token(1).is(Keyword::Of) || token(1).is(Keyword::In))
            return parseBuiltinProperty(Builtin::End, 1);
        break;
    case Keyword::Beginning:
        return parseBuiltinProperty(Builtin::Beginning, 1);
    default:
        if (ordinalOf(token().keyword) != 0)
            return parseSelected();
        break;
    }
    if (token().is(TokenKind::BarredName))
        return parseIdentifier(isOwned);
    if (!token().is(TokenKind::Word) || (!token().is(Keyword::None) && !isSoft(token().keyword)))
        failExpecting("expression");
    // The words of the application come first where they are longer than the language's own.
    const Phrase phrase = matchPhrase();
    if (phrase.words < 2) {
        if (const Link builtin = parseBuiltinWord(); builtin.node)
            return builtin;
    }
    if (phrase.entry)
        return parseTerm(phrase);
    if (const Link builtin = parseBuiltinName(isOwned); builtin.node)
        return builtin;
    return parseIdentifier(isOwned);
}

/// `every x`, `first x`, `last x`, `some x`, `middle x`.
Parser::Link Parser::parseSelected() {
    const Token word = take();
    Selection selection;
    if (const int ordinal = ordinalOf(word.keyword)) {
        selection.form = SelectionForm::Index;
        auto* position = make<LiteralExpression>(word.range);
        position->value = Value::integer(ordinal);
        selection.first = position;
    } else if (word.is(Keyword::Some)) {
        selection.form = SelectionForm::Some;
    } else if (word.is(Keyword::Middle)) {
        selection.form = SelectionForm::Middle;
    }
    return parseClassLink(selection);
}

/// The class behind a word that says which of its objects are meant.
Parser::Link Parser::parseClassLink(Selection selection) {
    const SourceRange begin = m_lastRange;
    PieceClass piece = {};
    int words = 0;
    const Phrase phrase = matchPhrase();
    if (phrase.entry && phrase.entry->elementClass) {
        auto* element = make<ElementExpression>(begin);
        element->elementClass = *phrase.entry->elementClass;
        element->className = m_terminology->className(element->elementClass);
        element->selection = selection;
        element->selectedByWord = true;
        skip(phrase.words);
        return {element, &element->container};
    }
    if (matchPiece(piece, words)) {
        auto* part = make<PieceExpression>(begin);
        m_pieces.push_back(part);
        part->piece = piece;
        part->selection = selection;
        skip(words);
        return {part, &part->container};
    }
    failExpecting("class name");
}

/// What the language calls by a word that no application may take; no node for any other word.
Parser::Link Parser::parseBuiltinWord() {
    const SourceRange begin = token().range;
    PieceClass piece = {};
    int words = 0;
    if (matchPiece(piece, words))
        return parsePiece(piece, words);
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
    if ((isWord("application") || isWord("app")) && token(1).is(TokenKind::Text)) {
        take();
        auto* application = make<ApplicationExpression>(begin);
        application->name = parseLiteral();
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
    if (token(1).is(TokenKind::LeftParenthesis) || m_scope.slots_.contains(token().text.toLower()))
        return {};
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
    skip(words);
    parseIndex(part->selection);
    return {part, &part->container};
}

/// Words of the application, in the role that fits here.
Parser::Link Parser::parseTerm(const Phrase& phrase) {
    const Terminology::Entry& entry = *phrase.entry;
    const SourceRange begin = token().range;
    if (entry.elementClass && (!entry.property || entry.isPlural))
        return parseElement(phrase);
    if (entry.property) {
        auto* property = make<TermPropertyExpression>(begin);
        property->term = *entry.property;
        property->name = m_terminology->propertyName(*entry.property);
        skip(phrase.words);
        if (!entry.elementClass || !startsIndex())
            return {property, &property->container};
        auto* element = make<ElementExpression>(begin);
        element->elementClass = *entry.elementClass;
        element->className = m_terminology->className(*entry.elementClass);
        parseIndex(element->selection);
        return {element, &element->container};
    }
    if (entry.command)
        return {parseCommand(phrase), nullptr};
    skip(phrase.words);
    return {makeConstant(begin, *entry.enumerator, m_terminology->enumeratorName(*entry.enumerator)),
            nullptr};
}

/// `track 1`, `playlist "x"`, `tracks 1 thru 3`, `tracks`; the class alone is its name.
Parser::Link Parser::parseElement(const Phrase& phrase) {
    const SourceRange begin = token().range;
    const Term code = *phrase.entry->elementClass;
    skip(phrase.words);
    if (!phrase.entry->isPlural && !startsIndex())
        return {makeConstant(begin, code, m_terminology->className(code)), nullptr};
    auto* element = make<ElementExpression>(begin);
    element->elementClass = code;
    element->className = m_terminology->className(code);
    parseIndex(element->selection);
    if (element->selection.first)
        hold(*element, element->selection.first);
    return {element, &element->container};
}

/// A variable, a call, or somebody's field.
Parser::Link Parser::parseIdentifier(bool isOwned) {
    const Token name = take();
    if (token().is(TokenKind::LeftParenthesis)) {
        take();
        auto* call = make<CallExpression>(name.range);
        call->name = name.text;
        while (!token().is(TokenKind::RightParenthesis)) {
            call->arguments.push_back(parseExpression());
            hold(*call, call->arguments.back());
            if (!accept(TokenKind::Comma))
                break;
        }
        expect(TokenKind::RightParenthesis, "“)”");
        m_calls.push_back(call);
        return {call, &call->receiver};
    }
    if (token().is(Keyword::Of) || token().is(Keyword::In) || isOwned) {
        auto* field = make<FieldExpression>(name.range);
        field->name = name.text;
        return {field, &field->container};
    }
    return {makeVariable(name), nullptr};
}

/// `3`, `"name"`, `named "name"`, `id 5`, `1 thru 3`; nothing means every one.
void Parser::parseIndex(Selection& selection) {
    if (!startsIndex())
        return;
    if (areWords({"named"})) {
        take();
        selection.form = SelectionForm::Name;
        selection.first = parseIndexOperand();
        return;
    }
    if (isWord("id")) {
        take();
        selection.form = SelectionForm::Id;
        selection.first = parseIndexOperand();
        return;
    }
    acceptWord("index");
    const bool hasFrom = accept(Keyword::From);
    selection.form = SelectionForm::Index;
    selection.first = parseIndexOperand();
    if (accept(Keyword::Thru) || (hasFrom && accept(Keyword::To))) {
        selection.form = SelectionForm::Range;
        selection.last = parseIndexOperand();
    }
}

/// Whether an index may begin here: nothing that could be the next word of the sentence.
bool Parser::startsIndex() {
    switch (token().kind) {
    case TokenKind::Integer:
    case TokenKind::Real:
    case TokenKind::Text:
    case TokenKind::LeftParenthesis:
    case TokenKind::BarredName:
        return true;
    case TokenKind::Minus:
        return token(1).is(TokenKind::Integer);
    case TokenKind::Word:
        break;
    default:
        return false;
    }
    if (token().is(Keyword::From))
        return token(1).is(TokenKind::Integer) || token(1).is(TokenKind::LeftParenthesis);
    if (isWord("id") || isWord("named"))
        return !token(1).is(Keyword::Of);
    return isIdentifier() && !isWord("exists") && (!matchPhrase().entry || isWord("index"));
}

Expression* Parser::parseIndexOperand() {
    const Nesting nesting(*this);
    const SourceRange begin = token().range;
    if (accept(TokenKind::Minus)) {
        auto* negation = make<UnaryExpression>(begin, ExpressionKind::Negate);
        negation->operand = parseIndexOperand();
        hold(*negation, negation->operand);
        return negation;
    }
    if (Expression* literal = parseLiteral())
        return literal;
    if (!isIdentifier())
        failExpecting("number, text or variable");
    if (token(1).is(TokenKind::LeftParenthesis))
        return parseIdentifier().node;
    return makeVariable(take());
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

bool Parser::matchBuiltinProperty(Builtin& property, int& words, bool isOwned) {
    static constexpr std::pair<const char*, Builtin> names[] = {
        {"class", Builtin::Class}, {"length", Builtin::Length},   {"contents", Builtin::Contents},
        {"rest", Builtin::Rest},   {"reverse", Builtin::Reverse},
    };
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
    for (const auto& [name, value] : names) {
        // Without an `of` these are names that a script may well use for itself.
        if (isWord(name) && (token(1).is(Keyword::Of) || token(1).is(Keyword::In) || isOwned)) {
            property = value;
            words = 1;
            return true;
        }
    }
    return false;
}

bool Parser::isIdentifier(std::size_t ahead) {
    const Token& candidate = token(ahead);
    return candidate.is(TokenKind::BarredName) ||
           (candidate.is(TokenKind::Word) && (candidate.is(Keyword::None) || isSoft(candidate.keyword)));
}

} // namespace tarnwick::script
