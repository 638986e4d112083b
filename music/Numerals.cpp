#include "music/Numerals.h"

#include <locale.h>

#include <charconv>
#include <clocale>
#include <cstdlib>

namespace tarnwick {

namespace {

/// strtod obeys the locale of the process, which is the user's.
locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

std::optional<qint64> decimalInteger(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const char* first = bytes.constBegin();
    const char* const end = bytes.constEnd();
    if (first != end && *first == '+') {
        ++first;
        if (first != end && *first == '-')
            return std::nullopt;
    }
    qint64 value = 0;
    const auto [last, error] = std::from_chars(first, end, value);
    if (error != std::errc() || last != end)
        return std::nullopt;
    return value;
}

std::optional<double> decimalFloat(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty() || QByteArrayView(" \t\n\v\f\r").contains(bytes.front()))
        return std::nullopt;
    char* last = nullptr;
    const double value = strtod_l(bytes.constData(), &last, cLocale());
    if (last != bytes.constEnd()) // also when a NUL stands inside
        return std::nullopt;
    return value;
}

} // namespace tarnwick
