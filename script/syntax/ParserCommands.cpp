#include "script/syntax/Parser.h"

#include <QRegularExpression>

namespace tarnwick::script {

/// Whether a command's or a `return`'s value may begin here.
bool Parser::startsExpression() {
    switch (token().kind) {
    case TokenKind::Integer:
    case TokenKind::Real:
    case TokenKind::Text:
    case TokenKind::BarredName:
    case TokenKind::LeftParenthesis:
    case TokenKind::LeftBrace:
    case TokenKind::Minus:
        return true;
    case TokenKind::Word:
        break;
    default:
        return false;
    }
    switch (token().keyword) {
    case Keyword::None:
    case Keyword::True:
    case Keyword::False:
    case Keyword::It:
    case Keyword::Its:
    case Keyword::Me:
    case Keyword::My:
    case Keyword::Not:
    case Keyword::Get:
    case Keyword::The:
    case Keyword::Every:
    case Keyword::Some:
    case Keyword::First:
    case Keyword::Second:
    case Keyword::Third:
    case Keyword::Fourth:
    case Keyword::Fifth:
    case Keyword::Sixth:
    case Keyword::Seventh:
    case Keyword::Eighth:
    case Keyword::Ninth:
    case Keyword::Tenth:
    case Keyword::Last:
    case Keyword::Front:
    case Keyword::Back:
    case Keyword::Middle:
    case Keyword::Return:
        return true;
    default:
        return false;
    }
}

/// `log`, `delay`, `display dialog`; null when it is none.
Expression* Parser::parseStandardCommand() {
    const SourceRange begin = token().range;
    if (areWords({"display", "dialog"}))
        return parseDialog(begin);
    const bool isLog = isWord("log");
    if (!isLog && !isWord("delay"))
        return nullptr;
    take();
    auto* command = make<StandardCommandExpression>(begin);
    command->command = isLog ? StandardCommand::Log : StandardCommand::Delay;
    if (startsExpression()) {
        command->direct = parseExpression();
        hold(*command, command->direct);
    }
    finish(*command);
    return command;
}

/// `round x`, with the way to round behind it.
Expression* Parser::parseRound() {
    auto* round = make<RoundExpression>(take().range);
    round->operand = parseExpression();
    hold(*round, round->operand);
    if (acceptWord("rounding")) {
        if (acceptWord("up"))
            round->rounding = Rounding::Up;
        else if (acceptWord("down"))
            round->rounding = Rounding::Down;
        else if (areWords({"toward", "zero"}) || areWords({"to", "nearest"}))
            round->rounding = isWord("to") ? Rounding::ToNearest : Rounding::TowardZero;
        else if (areWords({"as", "taught", "in", "school"}))
            round->rounding = Rounding::AsTaught;
        else
            failExpecting("“up”, “down”, “toward zero”, “to nearest” or “as taught in school”");
        if (round->rounding == Rounding::AsTaught)
            skip(4);
        else if (round->rounding == Rounding::ToNearest || round->rounding == Rounding::TowardZero)
            skip(2);
    }
    finish(*round);
    return round;
}

/// `offset of x in y`; without the `in` it is the field of a record.
Expression* Parser::parseOffset() {
    const Token name = take();
    take();
    Expression* part = nullptr;
    {
        const ReferencesEndAtIn ends(*this, true);
        part = parseReference();
    }
    if (!accept(Keyword::In)) {
        auto* field = make<FieldExpression>(name.range);
        field->name = name.text;
        field->container = part;
        hold(*field, part);
        finish(*field);
        return field;
    }
    auto* offset = make<OffsetExpression>(name.range);
    offset->part = part;
    offset->whole = parseExpression(ConcatenationPrecedence);
    hold(*offset, offset->part);
    hold(*offset, offset->whole);
    finish(*offset);
    return offset;
}

/// Whether the script has a handler `round`, which then is meant: it may come further down.
bool Parser::definesRound() {
    static const QRegularExpression handler(QStringLiteral("^\\s*(?:on|to)\\s+round\\s*\\("),
                                            QRegularExpression::MultilineOption |
                                                QRegularExpression::CaseInsensitiveOption);
    if (!m_definesRound)
        m_definesRound = handler.match(m_program->source).hasMatch();
    return *m_definesRound;
}

Expression* Parser::parseDialog(const SourceRange& begin) {
    skip(2);
    auto* command = make<StandardCommandExpression>(begin);
    command->command = StandardCommand::DisplayDialog;
    command->direct = parseExpression();
    hold(*command, command->direct);
    for (;;) {
        if (areWords({"default", "answer"})) {
            skip(2);
            command->defaultAnswer = parseExpression();
            hold(*command, command->defaultAnswer);
        } else if (areWords({"default", "button"}) || areWords({"cancel", "button"}) ||
                   areWords({"giving", "up", "after"}) || areWords({"with", "title"}) ||
                   areWords({"with", "icon"})) {
            skip(isWord("giving") ? 3 : 2);
            if (!acceptWord("stop") && !acceptWord("note") && !acceptWord("caution"))
                parseExpression();
        } else if (acceptWord("buttons")) {
            parseExpression();
        } else {
            break;
        }
    }
    finish(*command);
    return command;
}

/// A command of the application, with what it is about and its labelled parameters.
Expression* Parser::parseCommand(const Phrase& phrase) {
    auto* command = make<CommandExpression>(token().range);
    command->command = *phrase.entry->command;
    command->name = phrase.text;
    skip(phrase.words);
    const Terminology::Parameters& parameters = m_terminology->parameters(command->command);
    const auto matchLabel = [&]() -> const std::pair<QString, Term>* {
        for (const auto& parameter : parameters) {
            const QStringList words = parameter.first.split(QLatin1Char(' '));
            std::size_t at = 0;
            while (at < static_cast<std::size_t>(words.size()) &&
                   isWord(words[static_cast<qsizetype>(at)].toUtf8().constData(), at))
                ++at;
            if (at == static_cast<std::size_t>(words.size())) {
                skip(static_cast<int>(at));
                return &parameter;
            }
        }
        return nullptr;
    };
    const auto parseParameters = [&] {
        while (const auto* label = matchLabel()) {
            command->parameters.emplace_back(label->second, parseExpression());
            hold(*command, command->parameters.back().second);
        }
    };
    parseParameters();
    if (command->parameters.empty() && startsExpression()) {
        command->direct = parseExpression();
        hold(*command, command->direct);
        parseParameters();
    }
    finish(*command);
    return command;
}

} // namespace tarnwick::script
