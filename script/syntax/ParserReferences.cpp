#include "script/syntax/Parser.h"
#include "script/values/Application.h"

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

} // namespace

/// `a of b of c`, with `whose` and `exists` behind it.
Expression* Parser::parseReference() {
    const SourceRange begin = token().range;
    std::vector<Link> links{parseLink()};
    while (links.back().container && isOf()) {
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
    for (const Link& link : links) {
        if (link.node->kind == ExpressionKind::OwnedList)
            distribute(static_cast<OwnedListExpression&>(*link.node));
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
    if (Expression* literal = parseLiteral()) {
        if (literal->kind == ExpressionKind::List && isOf())
            return parseOwnedList(static_cast<ListExpression*>(literal));
        return {literal, nullptr};
    }
    if (token().is(Keyword::Back)) {
        if (const Phrase phrase = matchPhrase(); phrase.entry)
            return parseTerm(phrase); // `back track` is not the last one
    }
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
    if (!isIdentifier())
        failExpecting("expression");
    // The words of the application come first where they are longer than the language's own.
    const Phrase phrase = matchPhrase();
    if (phrase.words < 2) {
        if (const Link builtin = parseBuiltinWord(); builtin.node)
            return builtin;
    }
    if (phrase.entry)
        return parseTerm(phrase);
    refuseUnsupported();
    if (const Link builtin = parseBuiltinName(isOwned); builtin.node)
        return builtin;
    return parseIdentifier(isOwned);
}

/// `a reference to x`; null when it is none.
Expression* Parser::parseReferenceTo() {
    if (!isWord("a") || (!isWord("reference", 1) && !isWord("ref", 1)) || !token(2).is(Keyword::To))
        return nullptr;
    auto* reference = make<ReferenceToExpression>(token().range);
    skip(3);
    reference->operand = parseReference();
    hold(*reference, reference->operand);
    finish(*reference);
    return reference;
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
    if (Term itemClass = {}; matchItemClass(itemClass)) {
        auto* part = make<PieceExpression>(begin);
        part->piece = PieceClass::ItemOfClass;
        part->itemClass = itemClass;
        part->selection = selection;
        take();
        return {part, &part->container};
    }
    failExpecting("class name");
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
        const ReferencesEndAtIn isOfAgain(*this, false);
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
    if (isOf() || isOwned) {
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

} // namespace tarnwick::script
