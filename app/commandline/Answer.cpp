#include "app/commandline/Answer.h"

#include <cstdio>

namespace tarnwick {

namespace {

bool isBlank(QChar letter) {
    switch (letter.unicode()) {
    case '\t':
    case '\n':
    case '\v':
    case '\f':
    case '\r':
    case 0x85: // next line
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
        return true;
    default:
        return false;
    }
}

/// Overrides and isolates reach as far as the line does, marks only to the next letter: those stay, as names
/// in Arabic and Hebrew need them.
bool turnsDirection(QChar letter) {
    const char16_t code = letter.unicode();
    return (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

} // namespace

QString printable(const QString& text) {
    QString line;
    line.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar letter = text.at(at);
        if (letter == QLatin1Char('\r') && at + 1 < text.size() && text.at(at + 1) == QLatin1Char('\n'))
            continue;
        if (isBlank(letter))
            line += QLatin1Char(' ');
        else if (letter.category() == QChar::Other_Control || turnsDirection(letter))
            line += QStringLiteral("\\u%1").arg(letter.unicode(), 4, 16, QLatin1Char('0'));
        else
            line += letter;
    }
    return line;
}

void complain(const QString& line) {
    std::fprintf(stderr, "tarnwick: %s\n", printable(line).toUtf8().constData());
}

bool print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
}

QString pictureNameFault(const QString& file) {
    return file.endsWith(QLatin1String(".png"), Qt::CaseInsensitive)
               ? QString()
               : QStringLiteral("pictures are written as PNG, so '%1' has to end in .png").arg(file);
}

} // namespace tarnwick
