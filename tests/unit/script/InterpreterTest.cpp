// What needs more than a script that runs to its end: limits, hostile texts, threads, replies.

#include "script/run/Interpreter.h"

#include "script/values/Application.h"
#include "script/values/Coercion.h"
#include "script/values/Printer.h"
#include "tests/fakes/FakeMusic.h"
#include "tests/fakes/QuietHost.h"

#include <gmock/gmock.h>

#include <thread>

using namespace std::chrono_literals;
using namespace tarnwick;
using namespace tarnwick::script;

namespace {

class InterpreterTest : public testing::Test {
protected:
    Outcome run(const QString& source, const Limits& limits = {}) {
        return interpreter.run(source, host, limits);
    }
    int errorOf(const QString& source, const Limits& limits = {}) {
        const Outcome outcome = run(source, limits);
        return outcome.error ? outcome.error->number : 0;
    }

    std::shared_ptr<fakes::FakeLibrary> library = std::make_shared<fakes::FakeLibrary>();
    fakes::FakeProvider provider{library};
    Interpreter interpreter{provider};
    fakes::QuietHost host;
};

TEST_F(InterpreterTest, SyntaxErrorsNameTheirPlace) {
    const std::pair<const char*, const char*> rows[] = {
        {"log 1\nlog \"open", "2:5: Expected “\"” but found end of script. (-2741)"},
        {"set |open to 3\n", "1:5: Expected “|” but found end of line. (-2741)"},
        {"log 1\n\n  (* open (* *)", "3:3: Expected “*)” but found end of script. (-2741)"},
        {"if true then\r\nlog 1\r\n", "3:1: Expected “end” but found end of script. (-2741)"},
        {"tell application \"Music\"\nplay \"a\"b\"\nend tell",
         "2:9: Expected end of line but found identifier “b”. (-2741)"},
    };
    for (const auto& [source, message] : rows) {
        const Outcome outcome = run(QString::fromUtf8(source));
        ASSERT_TRUE(outcome.error) << source;
        EXPECT_EQ(outcome.error->toStringWithPlace().toStdString(), message);
    }
}

/// Texts that try to harm the program: each has to end with its error, soon and in bounded memory.
TEST_F(InterpreterTest, SurvivesHostileTexts) {
    const auto many = [](const char* text, int times) { return QString::fromLatin1(text).repeated(times); };
    const std::pair<QString, int> rows[] = {
        {many("(", 1'000'000), errors::StackOverflow},
        {many("{", 1'000'000), errors::StackOverflow},
        {many("not ", 1'000'000), errors::StackOverflow},
        {"log 1" + many(" + 1", 100'000), errors::StackOverflow},
        {"log " + many("x of ", 100'000) + "y", errors::StackOverflow},
        {"log x" + many("'s y", 100'000), errors::StackOverflow},
        {many("if true then\n", 100'000), errors::StackOverflow},
        {many("tell me to ", 100'000), errors::StackOverflow},
        {many("(*", 1'000'000), errors::Syntax},
        {QString(1'000'000, QChar(0xd800)), errors::Syntax},
        {QString(20'000'000, QLatin1Char(' ')), errors::OutOfMemory},
        {"on f()\nreturn 1 + f()\nend f\nf()", errors::StackOverflow},
        {"on f(x)\nreturn f({x})\nend f\nf(1)", errors::StackOverflow},
        {"set t to \"xxxxxxxxxx\"\nrepeat\nset t to t & t\nend repeat", errors::OutOfMemory},
        {"set l to {1}\nrepeat\nset l to l & l\nend repeat", errors::OutOfMemory},
        {"set l to {}\nrepeat\nset end of l to {}\nend repeat", errors::OutOfMemory},
        {"repeat\nset l to {}\nset end of l to l\nend repeat", errors::OutOfMemory},
        {"set l to {}\nset end of l to l\nl", errors::StackOverflow},
        {"set l to {}\nset end of l to l\nl as text", errors::StackOverflow},
        {"set l to {}\nset end of l to l\ncopy l to m", errors::StackOverflow},
        {"set l to {}\nset end of l to l\nset m to {l}\nl = m", 0},
        {"set l to {1}\nset m to {1}\nset end of l to m\nset end of m to l\nl = m", errors::StackOverflow},
        {"set l to {1}\nset m to {1}\nrepeat 60 times\nset l to {l, l}\nset m to {m, m}\nend "
         "repeat\nl = m",
         errors::StackOverflow},
        {"set l to {1}\nrepeat 60 times\nset l to {l, l}\nend repeat\nl", errors::OutOfMemory},
        {"set l to {1}\nrepeat 60 times\nset l to {l, l}\nend repeat\nl as text", errors::OutOfMemory},
        {"set l to {1}\nrepeat 60 times\nset l to {l, l}\nend repeat\ncopy l to m", errors::OutOfMemory},
        {"set x to {}\nrepeat 100000 times\nset x to {x}\nend repeat\nx", errors::StackOverflow},
        {"set x to {}\nrepeat 100000 times\nset x to {x}\nend repeat\nset x to 1", 0},
        {"set l to {1}\nrepeat with x in l\nset item 1 of l to x\nend repeat\nl", errors::StackOverflow},
        {"set r to {a:1}\nset a of r to r\nr as text", errors::CoercionFailed},
        {"error {1, {2}} & {{}}", errors::General},
    };
    Limits limits;
    limits.memoryBytes = 16 << 20;
    limits.listLength = 200'000;
    for (const auto& [source, number] : rows)
        EXPECT_EQ(errorOf(source, limits), number) << source.left(100).toStdString();
}

TEST_F(InterpreterTest, ErrorsHaveAPlaceAndAnEnd) {
    const auto longWord = QString(5000, QLatin1Char('w'));
    const QString rows[] = {
        longWord,
        QStringLiteral("error \"%1\"").arg(longWord),
        QStringLiteral("error \"%1\"").arg(QString::fromUtf8("🎵").repeated(2000)),
        longWord + QStringLiteral("()"),
        QStringLiteral("|%1| of 5").arg(longWord),
        QStringLiteral("{%1:1} as text").arg(longWord),
        QStringLiteral("on f(x)\nend\non %1(\n").arg(longWord),
        QStringLiteral("set l to {}\nset end of l to l\nreturn l"),
        QString(20'000'000, QLatin1Char(' ')),
    };
    for (const QString& source : rows) {
        const Outcome outcome = run(source);
        ASSERT_TRUE(outcome.error) << source.left(40).toStdString();
        EXPECT_GE(outcome.error->range.line, 1) << source.left(40).toStdString();
        EXPECT_LE(outcome.error->message.size(), 1000) << source.left(40).toStdString();
        EXPECT_TRUE(outcome.error->message.isValidUtf16()) << source.left(40).toStdString();
    }
}

TEST_F(InterpreterTest, EndsEndlessScripts) {
    const char* endless[] = {
        "repeat\nend repeat",
        "repeat\ntry\nerror \"x\"\nend try\nend repeat",
        "repeat while true\nend repeat",
        "repeat 9000000000000000000 times\nend repeat",
        "repeat with i from 1 to 9000000000000000000\nend repeat",
        "on f()\nend f\nrepeat\nf()\nend repeat",
        "try\nrepeat\nend repeat\non error\nreturn 1\nend try",
    };
    Limits limits;
    limits.runTime = 20ms;
    std::atomic<bool> cancelled = true;
    Limits cancelling;
    cancelling.cancelled = &cancelled;
    for (const char* source : endless) {
        EXPECT_EQ(errorOf(QString::fromLatin1(source), limits), errors::TimedOut) << source;
        EXPECT_EQ(errorOf(QString::fromLatin1(source), cancelling), errors::UserCancelled) << source;
    }
}

TEST_F(InterpreterTest, DelayEndsWithTheRunTime) {
    Limits limits;
    limits.runTime = 1h;
    EXPECT_EQ(errorOf("delay 7200", limits), errors::TimedOut);
    EXPECT_EQ(errorOf("delay 1.0E+300"), 0);
    EXPECT_EQ(errorOf("delay -1"), 0);
    ASSERT_EQ(host.delays.size(), 3u);
    EXPECT_LE(host.delays[0], 1h);
    EXPECT_GT(host.delays[1], 24h * 365);
    EXPECT_EQ(host.delays[2], 0ns);
}

TEST_F(InterpreterTest, RepliesOutliveTheirRun) {
    const Outcome outcome = run("set l to {1, \"two\", 3.5, true, missing value, {a:1}, "
                                "\"7\", {}}\nset end of l to {l's item 2}\nl");
    ASSERT_TRUE(outcome.reply);
    const Descriptor& reply = *outcome.reply;
    EXPECT_EQ(reply.type(), DescriptorType::List);
    ASSERT_EQ(reply.numberOfItems(), 9);
    EXPECT_FALSE(reply.item(0) || reply.item(10));
    EXPECT_EQ(reply.item(1)->int32Value(), 1);
    EXPECT_EQ(reply.item(1)->text(), "1");
    EXPECT_EQ(reply.item(2)->text(), "two");
    EXPECT_EQ(reply.item(2)->doubleValue(), 0.0);
    EXPECT_EQ(reply.item(2)->coerceToList()->numberOfItems(), 1);
    EXPECT_EQ(reply.item(3)->doubleValue(), 3.5);
    EXPECT_EQ(reply.item(3)->int32Value(), 4);
    EXPECT_TRUE(reply.item(4)->booleanValue());
    EXPECT_FALSE(reply.item(5)->text());
    EXPECT_EQ(reply.item(5)->int32Value(), 0);
    EXPECT_EQ(reply.item(6)->field("A")->int32Value(), 1);
    EXPECT_EQ(reply.item(7)->doubleValue(), 7.0);
    EXPECT_EQ(reply.item(9)->item(1)->text(), "two");
    EXPECT_EQ(json(reply), R"([1,"two",3.5,true,null,{"a":1},"7",[],["two"]])");

    const Outcome nothing = run("tell application \"Music\" to play");
    ASSERT_TRUE(nothing.reply);
    EXPECT_EQ(nothing.reply->type(), DescriptorType::Null);
    EXPECT_FALSE(nothing.reply->coerceToList() || nothing.reply->text());
    EXPECT_EQ(json(*nothing.reply), "null");
}

TEST_F(InterpreterTest, DataIsSharedAndPrintedByItsLength) {
    library->tracks = {{"T", {}, {}}};
    library->makeIndex();
    library->artwork = QByteArray(5, 'x');
    EXPECT_EQ(errorOf("tell application \"Music\" to get {genre, location, it} of current track"),
              errors::Syntax); // a list has no owner
    const Outcome data = run("tell application \"Music\"\nset t to current track\n"
                             "{data of artwork 1 of t, location of t, t}\nend tell");
    ASSERT_TRUE(data.reply);
    EXPECT_EQ(data.reply->item(1)->data().constData(), library->artwork.constData());
    EXPECT_EQ(json(*data.reply), R"([{"data":5},"/music/T.flac","current track"])");
    EXPECT_EQ(literal(*data.reply), "{«data tdta7878787878», alias \"/music/T.flac\", current track}");
}

TEST_F(InterpreterTest, AsksForAFilteredSetOnce) {
    for (int i = 0; i < 100; ++i)
        library->tracks.push_back({QString::number(i), {}, i % 2 ? "A" : "B"});
    library->makeIndex();
    const Outcome outcome =
        run("tell application \"Music\" to name of every track of library playlist 1 whose album is \"a\"");
    ASSERT_TRUE(outcome.reply);
    EXPECT_EQ(outcome.reply->numberOfItems(), 50);
    EXPECT_EQ(library->valuesCalls, 1);
    EXPECT_EQ(library->elementCalls, 0);
}

TEST_F(InterpreterTest, CompilesATextOnce) {
    const QString source = "return 1";
    const auto compile = [&] { return std::get<ProgramPointer>(interpreter.compile(source)); };
    const ProgramPointer first = compile();
    EXPECT_EQ(first, compile());
    for (int i = 0; i < 100; ++i)
        interpreter.compile(QStringLiteral("return %1").arg(i + 2));
    EXPECT_NE(first, compile()) << "the cache has a bound";
    EXPECT_TRUE(interpreter.run(first, host).reply) << "and what it forgets lives on";
}

TEST_F(InterpreterTest, ThreadsShareACompiledText) {
    const QString source = "set l to {\"x\", 1, true}\nset s to \"\"\nrepeat with i from 1 to 200\n"
                           "set s to s & item 1 of l\nend repeat\nreturn {s, l}";
    std::vector<Outcome> outcomes(8);
    std::vector<std::thread> threads;
    for (Outcome& outcome : outcomes)
        threads.emplace_back([&] {
            fakes::QuietHost own;
            outcome = interpreter.run(source, own);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const Outcome& outcome : outcomes) {
        ASSERT_TRUE(outcome.reply);
        EXPECT_EQ(*outcome.reply, *outcomes.front().reply);
    }
    EXPECT_EQ(outcomes.front().reply->item(1)->text()->size(), 200);
}

TEST(SourceTest, IsUtf8) {
    EXPECT_EQ(std::get<QString>(decodeSource("\xef\xbb\xbflog \"\xc3\xa8\"\r\nlog 2")), "log \"è\"\nlog 2");
    const auto broken = decodeSource("log 1\nlog \"\xff\"");
    ASSERT_TRUE(std::holds_alternative<Error>(broken));
    EXPECT_EQ(std::get<Error>(broken).toStringWithPlace().toStdString(),
              "2:6: The text is not UTF-8. (-2741)");
}

TEST(QueryTest, CountsFromBothEnds) {
    const struct {
        qint64 from, to, size;
        std::pair<qint64, qint64> expected;
    } rows[] = {{1, -1, 3, {0, 3}}, {2, 2, 3, {1, 2}},   {-1, -1, 3, {2, 3}},
                {4, 4, 3, {0, 0}},  {-4, -4, 3, {0, 0}}, {2, 9, 3, {1, 3}},
                {1, -1, 0, {0, 0}}, {3, 2, 3, {0, 0}},   {1, 1, 0, {0, 0}}};
    for (const auto& row : rows) {
        const Query query{.from = row.from, .to = row.to};
        EXPECT_EQ(query.within(row.size), row.expected) << row.from << " to " << row.to << " of " << row.size;
    }
}

} // namespace
