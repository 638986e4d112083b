#include "display/state/TrackTexts.h"

#include <QTextBoundaryFinder>

#include <cmath>

namespace tarnwick {

namespace {

/// The whole part of `number`; none when no 64-bit integer holds it.
std::optional<qint64> truncated(double number) {
    constexpr double limit = 9.2e18;
    if (!std::isfinite(number) || std::abs(number) > limit)
        return std::nullopt;
    return static_cast<qint64>(number);
}

} // namespace

qsizetype readerLength(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

QString wrapWords(const QString& text, int limit) {
    QStringList lines;
    qsizetype length = 0;
    for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
        const qsizetype wordLength = readerLength(word);
        if (!lines.isEmpty() && length + wordLength + 1 <= limit) {
            lines.last() += u' ' + word;
            length += 1 + wordLength;
        } else {
            lines.append(word);
            length = wordLength;
        }
    }
    return lines.join(u'\n');
}

QString durationText(double seconds) {
    const std::optional<qint64> whole = truncated(seconds);
    if (!whole || *whole < 0)
        return {};
    return QStringLiteral("%1:%2")
        .arg(*whole / 60, 2, 10, QLatin1Char('0'))
        .arg(*whole % 60, 2, 10, QLatin1Char('0'));
}

QString yearText(std::optional<qint64> year) {
    return year.value_or(0) == 0 ? QString() : QStringLiteral("(%1)").arg(*year);
}

QString bitRateText(double kilobits) {
    const std::optional<qint64> whole = truncated(kilobits);
    return whole ? QStringLiteral("Bit Rate: %1 kbps").arg(*whole) : QString();
}

QString fileSizeText(double bytes) {
    constexpr double mebibyte = 1048576;
    return std::isfinite(bytes) ? QStringLiteral("File Size: %1 MB").arg(bytes / mebibyte, 0, 'f', 2)
                                : QString();
}

QString sampleRateText(double rate) {
    const std::optional<qint64> whole = truncated(rate);
    return whole ? QStringLiteral("Sample Rate: %1 kHz").arg(*whole) : QString();
}

QString titleLabels(qint64 trackNumber, std::optional<qint64> discNumber, std::optional<qint64> totalDiscs) {
    QStringList labels;
    if (trackNumber >= 1)
        labels.append(QStringLiteral("%1.").arg(trackNumber));
    if (discNumber && totalDiscs.value_or(0) >= 2)
        labels.append(QStringLiteral("cd%1").arg(*discNumber));
    return labels.join(QStringLiteral("  "));
}

} // namespace tarnwick
