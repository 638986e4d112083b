#include "display/state/TrackTexts.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace tarnwick {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Wrap {
    QString text;
    int limit;
    QString wrapped;
};

TEST(TrackTexts, WrapsAtBlanksWithinTheLimit) {
    const QString word(80, u'x');
    const std::vector<Wrap> rows{
        {QString(), 10, QString()},
        {QStringLiteral("   "), 10, QString()},
        {QStringLiteral("one"), 10, QStringLiteral("one")},
        {QStringLiteral("  one   two "), 10, QStringLiteral("one two")},
        {QStringLiteral("abcd efghi"), 10, QStringLiteral("abcd efghi")},
        {QStringLiteral("abcde efghi"), 10, QStringLiteral("abcde\nefghi")},
        {QStringLiteral("a b c d e f"), 3, QStringLiteral("a b\nc d\ne f")},
        {word, 22, word},
        {QStringLiteral("a ") + word + QStringLiteral(" b"), 22,
         QStringLiteral("a\n") + word + QStringLiteral("\nb")},
        {QStringLiteral("one\ntwo three"), 7, QStringLiteral("one\ntwo\nthree")},
        // Two letters with an accent of their own, and an emoji of five code points.
        {QStringLiteral("e\u0301e\u0301 ab"), 5, QStringLiteral("e\u0301e\u0301 ab")},
        {QStringLiteral("\U0001F469\u200D\U0001F469\u200D\U0001F467 ab"), 4,
         QStringLiteral("\U0001F469\u200D\U0001F469\u200D\U0001F467 ab")},
    };
    for (const Wrap& row : rows)
        EXPECT_EQ(wrapWords(row.text, row.limit), row.wrapped) << qPrintable(row.text);
}

TEST(TrackTexts, WritesNumbersAndNothingForWhatIsNone) {
    const std::vector<std::pair<QString, QString>> rows{
        {durationText(0), QStringLiteral("00:00")},
        {durationText(59.99), QStringLiteral("00:59")},
        {durationText(3725), QStringLiteral("62:05")},
        {durationText(360000), QStringLiteral("6000:00")},
        {durationText(-1), QString()},
        {durationText(nan), QString()},
        {durationText(infinity), QString()},
        {durationText(1e300), QString()},
        {bitRateText(320.9), QStringLiteral("Bit Rate: 320 kbps")},
        {bitRateText(infinity), QString()},
        {bitRateText(1e19), QString()},
        {sampleRateText(44100), QStringLiteral("Sample Rate: 44100 kHz")},
        {sampleRateText(nan), QString()},
        {fileSizeText(5242880), QStringLiteral("File Size: 5.00 MB")},
        {fileSizeText(-infinity), QString()},
        {yearText(2019), QStringLiteral("(2019)")},
        {yearText(0), QString()},
        {yearText(std::nullopt), QString()},
        {titleLabels(4, 2, 2), QStringLiteral("4.  cd2")},
        {titleLabels(4, 1, std::nullopt), QStringLiteral("4.")},
        {titleLabels(4, 1, 1), QStringLiteral("4.")},
        {titleLabels(0, 1, 3), QStringLiteral("cd1")},
        {titleLabels(0, std::nullopt, 3), QString()},
    };
    for (size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

} // namespace
} // namespace tarnwick
