#include "platform/script/Token.h"

#include <QHash>

namespace tarnwick::script {

namespace {

// Words that only make sense after another one (greater, less, equal, than, back …) are reserved only there,
// so they are matched by their place in the grammar as well.
const QHash<QString, Keyword>& keywords() {
    static const QHash<QString, Keyword> table = {
        {QStringLiteral("and"), Keyword::And},
        {QStringLiteral("as"), Keyword::As},
        {QStringLiteral("back"), Keyword::Back},
        {QStringLiteral("begin"), Keyword::Begins},
        {QStringLiteral("beginning"), Keyword::Beginning},
        {QStringLiteral("begins"), Keyword::Begins},
        {QStringLiteral("but"), Keyword::But},
        {QStringLiteral("by"), Keyword::By},
        {QStringLiteral("comes"), Keyword::Comes},
        {QStringLiteral("considering"), Keyword::Considering},
        {QStringLiteral("contain"), Keyword::Contains},
        {QStringLiteral("contains"), Keyword::Contains},
        {QStringLiteral("copy"), Keyword::Copy},
        {QStringLiteral("div"), Keyword::Div},
        {QStringLiteral("does"), Keyword::Does},
        {QStringLiteral("doesn't"), Keyword::Doesnt},
        {QStringLiteral("eighth"), Keyword::Eighth},
        {QStringLiteral("else"), Keyword::Else},
        {QStringLiteral("end"), Keyword::End},
        {QStringLiteral("ends"), Keyword::Ends},
        {QStringLiteral("equal"), Keyword::Equal},
        {QStringLiteral("equals"), Keyword::Equals},
        {QStringLiteral("error"), Keyword::Error},
        {QStringLiteral("every"), Keyword::Every},
        {QStringLiteral("exit"), Keyword::Exit},
        {QStringLiteral("false"), Keyword::False},
        {QStringLiteral("fifth"), Keyword::Fifth},
        {QStringLiteral("first"), Keyword::First},
        {QStringLiteral("fourth"), Keyword::Fourth},
        {QStringLiteral("from"), Keyword::From},
        {QStringLiteral("front"), Keyword::Front},
        {QStringLiteral("get"), Keyword::Get},
        {QStringLiteral("given"), Keyword::Given},
        {QStringLiteral("global"), Keyword::Global},
        {QStringLiteral("greater"), Keyword::Greater},
        {QStringLiteral("if"), Keyword::If},
        {QStringLiteral("ignoring"), Keyword::Ignoring},
        {QStringLiteral("in"), Keyword::In},
        {QStringLiteral("is"), Keyword::Is},
        {QStringLiteral("isn't"), Keyword::Isnt},
        {QStringLiteral("it"), Keyword::It},
        {QStringLiteral("its"), Keyword::Its},
        {QStringLiteral("last"), Keyword::Last},
        {QStringLiteral("less"), Keyword::Less},
        {QStringLiteral("local"), Keyword::Local},
        {QStringLiteral("me"), Keyword::Me},
        {QStringLiteral("middle"), Keyword::Middle},
        {QStringLiteral("mod"), Keyword::Mod},
        {QStringLiteral("my"), Keyword::My},
        {QStringLiteral("ninth"), Keyword::Ninth},
        {QStringLiteral("not"), Keyword::Not},
        {QStringLiteral("of"), Keyword::Of},
        {QStringLiteral("on"), Keyword::On},
        {QStringLiteral("or"), Keyword::Or},
        {QStringLiteral("prop"), Keyword::Property},
        {QStringLiteral("property"), Keyword::Property},
        {QStringLiteral("repeat"), Keyword::Repeat},
        {QStringLiteral("return"), Keyword::Return},
        {QStringLiteral("script"), Keyword::Script},
        {QStringLiteral("second"), Keyword::Second},
        {QStringLiteral("set"), Keyword::Set},
        {QStringLiteral("seventh"), Keyword::Seventh},
        {QStringLiteral("sixth"), Keyword::Sixth},
        {QStringLiteral("some"), Keyword::Some},
        {QStringLiteral("start"), Keyword::Starts},
        {QStringLiteral("starts"), Keyword::Starts},
        {QStringLiteral("tell"), Keyword::Tell},
        {QStringLiteral("tenth"), Keyword::Tenth},
        {QStringLiteral("than"), Keyword::Than},
        {QStringLiteral("that"), Keyword::That},
        {QStringLiteral("the"), Keyword::The},
        {QStringLiteral("then"), Keyword::Then},
        {QStringLiteral("third"), Keyword::Third},
        {QStringLiteral("through"), Keyword::Thru},
        {QStringLiteral("thru"), Keyword::Thru},
        {QStringLiteral("times"), Keyword::Times},
        {QStringLiteral("to"), Keyword::To},
        {QStringLiteral("true"), Keyword::True},
        {QStringLiteral("try"), Keyword::Try},
        {QStringLiteral("until"), Keyword::Until},
        {QStringLiteral("where"), Keyword::Where},
        {QStringLiteral("while"), Keyword::While},
        {QStringLiteral("whose"), Keyword::Whose},
        {QStringLiteral("with"), Keyword::With},
        {QStringLiteral("without"), Keyword::Without},
    };
    return table;
}

} // namespace

QString Token::description() const {
    switch (kind) {
    case TokenKind::End:
        return QStringLiteral("end of script");
    case TokenKind::NewLine:
        return QStringLiteral("end of line");
    case TokenKind::BarredName:
        return QStringLiteral("identifier");
    case TokenKind::Integer:
    case TokenKind::Real:
        return QStringLiteral("number");
    case TokenKind::Text:
        return QStringLiteral("text");
    case TokenKind::Word:
        if (keyword == Keyword::None)
            return QStringLiteral("identifier “%1”").arg(text.left(40));
        break;
    default:
        break;
    }
    return QStringLiteral("“%1”").arg(text.left(40));
}

Keyword keywordOf(const QString& word) { return keywords().value(word.toLower(), Keyword::None); }

} // namespace tarnwick::script
