#include "players/Year.h"

#include <QString>

namespace tarnwick::players {

int yearIn(QStringView date) {
    constexpr qsizetype yearDigits = 4, dateDigits = 8;
    const auto isDigit = [&](qsizetype i) { return i < date.size() && date[i] >= u'0' && date[i] <= u'9'; };
    for (qsizetype begin = 0; begin < date.size(); ++begin) {
        qsizetype end = begin;
        while (isDigit(end))
            ++end;
        if (end - begin == yearDigits || end - begin == dateDigits)
            return date.mid(begin, yearDigits).toInt();
        begin = end;
    }
    return 0;
}

} // namespace tarnwick::players
