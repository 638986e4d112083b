#include "app/commandline/Answer.h"

#include <gmock/gmock.h>

using namespace tarnwick;

namespace {

TEST(AnswerTest, WhatIsPrintedIsOneLineThatATerminalShows) {
    const struct {
        const char16_t* text;
        const char16_t* line;
    } rows[] = {
        {u"Perché no? 🎵 日本", u"Perché no? 🎵 日本"},
        {u"a\nb\rc\r\nd\te\vf\fg", u"a b c d e f g"},
        {u"a\u2028b\u2029c\u0085d", u"a b c d"},
        {u"\u001b]0;owned\u0007 \u001b[2J", u"\\u001b]0;owned\\u0007 \\u001b[2J"},
        {u"\u009b2J\u007f\u0008", u"\\u009b2J\\u007f\\u0008"},
        {u"a\u202eb\u202c \u2066c\u2069", u"a\\u202eb\\u202c \\u2066c\\u2069"},
        {u"שלום\u200f!", u"שלום\u200f!"}, // a mark reaches no further than the next letter
        {u"", u""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(printable(QString::fromUtf16(row.text)).toStdString(),
                  QString::fromUtf16(row.line).toStdString());
    const QString zero = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    EXPECT_EQ(printable(zero), QStringLiteral("a\\u0000b"));
}

} // namespace
