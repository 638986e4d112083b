#include "music/Numerals.h"

#include <gmock/gmock.h>

namespace tarnwick {
namespace {

TEST(Numerals, DecimalInteger) {
    const struct {
        const char* text;
        std::optional<qint64> value;
    } rows[] = {
        {"0", 0},
        {"+7", 7},
        {"-12", -12},
        {"007", 7},
        {"9223372036854775807", std::numeric_limits<qint64>::max()},
        {"-9223372036854775808", std::numeric_limits<qint64>::min()},
        {"9223372036854775808", {}},
        {"", {}},
        {"+", {}},
        {"+-1", {}},
        {" 1", {}},
        {"1 ", {}},
        {"1.0", {}},
        {"٣", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(decimalInteger(QString::fromUtf8(row.text)), row.value) << '"' << row.text << '"';
}

TEST(Numerals, DecimalFloat) {
    const struct {
        const char* text;
        std::optional<double> value;
    } rows[] = {
        {"245.5", 245.5}, {"180", 180}, {"-1e3", -1000}, {"0x10", 16}, {".5", 0.5}, {"", {}},    {"x", {}},
        {" 1", {}},       {"\n1", {}},  {"1 ", {}},      {"1,5", {}},  {"1s", {}},  {"\v1", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(decimalFloat(QString::fromUtf8(row.text)), row.value) << '"' << row.text << '"';
}

} // namespace
} // namespace tarnwick
