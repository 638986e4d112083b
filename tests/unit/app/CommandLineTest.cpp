#include "app/commandline/CommandLine.h"

#include <gmock/gmock.h>

namespace tarnwick {
namespace {

QStringList words(const char* line) { return QString::fromUtf8(line).split(' ', Qt::SkipEmptyParts); }

TEST(CommandLine, OptionsStandAnywhere) {
    const struct {
        const char* line;
        const char* command;
        QStringList arguments;
        const char* option;
        const char* value;
    } rows[] = {
        {"", "display", {}, "source", nullptr},
        {"--source demo", "display", {}, "source", "demo"},
        {"status --json --player=vlc", "status", {}, "player", "vlc"},
        {"--json status", "status", {}, "json", ""},
        {"do --source demo volume 0.4", "do", {"volume", "0.4"}, "source", "demo"},
        {"script - --limit 2", "script", {"-"}, "limit", "2"},
        {"do title --json", "do", {"title", "--json"}, "json", nullptr},
        {"do playlist --source=x --player y", "do", {"playlist", "--source=x"}, "player", "y"},
        {"snapshot a.png --set a=1 --set b=2", "snapshot", {"a.png"}, "set", "b=2"},
        {"--launched-at-login", "display", {}, "launched-at-login", ""},
    };
    for (const auto& row : rows) {
        const auto parsed = parseCommandLine(words(row.line));
        ASSERT_TRUE(std::holds_alternative<Invocation>(parsed))
            << row.line << ": " << std::get<UsageError>(parsed).message.toStdString();
        const auto& invocation = std::get<Invocation>(parsed);
        EXPECT_EQ(invocation.command, QString(row.command)) << row.line;
        EXPECT_EQ(invocation.arguments, row.arguments) << row.line;
        const auto value = invocation.option(row.option);
        EXPECT_EQ(value.has_value(), row.value != nullptr) << row.line;
        EXPECT_EQ(value.value_or(QString()), QString(row.value)) << row.line;
    }
}

} // namespace
} // namespace tarnwick
