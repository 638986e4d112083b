#include "script/syntax/Token.h"

namespace tarnwick::script {

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

} // namespace tarnwick::script
