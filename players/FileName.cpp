#include "players/FileName.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

namespace tarnwick::players {

namespace {

constexpr char16_t escape = 0xDC00;

bool isEscaped(QChar letter) {
    return letter.unicode() >= escape + 0x80 && letter.unicode() <= escape + 0xFF;
}

/// Whether the letter at `i` stands for a byte and is not the second half of a pair.
bool isByte(const QString& name, qsizetype i) {
    return isEscaped(name[i]) && (i == 0 || !name[i - 1].isHighSurrogate());
}

/// How many bytes of `bytes` from `begin` on are one letter; 0 when they are none.
qsizetype letterAt(const QByteArray& bytes, qsizetype begin) {
    for (qsizetype length = 1; length <= std::min<qsizetype>(4, bytes.size() - begin); ++length) {
        const QByteArray part = bytes.mid(begin, length);
        if (QString::fromUtf8(part).toUtf8() == part)
            return length;
    }
    return 0;
}

} // namespace

QString nameFromBytes(const QByteArray& bytes) {
    QString name = QString::fromUtf8(bytes);
    if (name.toUtf8() == bytes)
        return name;
    name.clear();
    for (qsizetype i = 0; i < bytes.size();) {
        const qsizetype length = letterAt(bytes, i);
        if (length > 0)
            name += QString::fromUtf8(bytes.mid(i, length));
        else
            name += QChar(static_cast<char16_t>(escape + static_cast<unsigned char>(bytes[i])));
        i += std::max<qsizetype>(length, 1);
    }
    return name;
}

QByteArray bytesOfName(const QString& name) {
    QByteArray bytes;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (!isByte(name, i))
            continue;
        bytes += name.mid(begin, i - begin).toUtf8();
        bytes += static_cast<char>(name[i].unicode() - escape);
        begin = i + 1;
    }
    return begin == 0 ? name.toUtf8() : bytes + name.mid(begin).toUtf8();
}

QString readableName(const QString& name) {
    QString readable = name;
    for (qsizetype i = 0; i < name.size(); ++i)
        if (isByte(name, i))
            readable[i] = QChar::ReplacementCharacter;
    return readable;
}

QStringList filesIn(const QString& folder) {
    QStringList names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(bytesOfName(folder).toStdString(), error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code fault;
        const std::string name = entry->path().filename().string();
        if (name.front() != '.' && entry->is_regular_file(fault))
            names.append(nameFromBytes(QByteArray::fromStdString(name)));
    }
    names.sort(); // as the tracks of most albums stand, so that little is left to sort
    return names;
}

} // namespace tarnwick::players
