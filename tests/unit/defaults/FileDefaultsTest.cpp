#include "tests/unit/defaults/FileDefaultsFixture.h"

#include <QProcess>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace tarnwick::defaults {
namespace {

class FileDefaultsTest : public FileDefaultsFixture {
protected:
    std::unique_ptr<QProcess> startWriter(const QString& prefix, int count) {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QStringLiteral(DEFAULTS_WRITER), {path, prefix, QString::number(count)});
        return process;
    }
};

TEST_F(FileDefaultsTest, EveryTypeComesBackAsItself) {
    const QStringList names{"a\n\"b\"", QString(), "遠い海"};
    {
        const auto defaults = open();
        defaults->set("bool", true);
        defaults->set("number", 0.1);
        defaults->set("text", "true");
        defaults->set("texts", names);
        defaults->set("none", QStringList());
    }
    const auto defaults = open();
    EXPECT_EQ(defaults->get<bool>("bool"), true);
    EXPECT_EQ(defaults->get<double>("number"), 0.1);
    EXPECT_EQ(defaults->get<QString>("text"), "true");
    EXPECT_EQ(defaults->get<bool>("text"), std::nullopt) << "a text is no boolean";
    EXPECT_EQ(defaults->get<QStringList>("texts"), names);
    EXPECT_EQ(defaults->get<QStringList>("none"), QStringList());
    EXPECT_EQ(defaults->value("missing"), std::nullopt);
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(FileDefaultsTest, KeepsWhatItDoesNotKnow) {
    fill(R"({"future": {"nested": [1, null]}, "mixed": [1, "a"], "preventSleep": true})");
    open()->set("preventSleep", false);
    EXPECT_EQ(content(), QJsonDocument::fromJson(
                             R"({"future": {"nested": [1, null]}, "mixed": [1, "a"], "preventSleep": false})")
                             .object());
    EXPECT_EQ(open()->value("mixed"), std::nullopt);
}

TEST_F(FileDefaultsTest, SetsAsideWhatCannotBeRead) {
    for (const char* bytes : {"{\"half\": tr", "[1, 2]", ""}) {
        fill(bytes);
        const auto defaults = open();
        EXPECT_EQ(defaults->value("half"), std::nullopt);
        defaults->set("key", true);
    }
    EXPECT_THAT(files(), ElementsAre("defaults.json", "defaults.json.unreadable-1",
                                     "defaults.json.unreadable-2", "defaults.json.unreadable-3"));
    EXPECT_EQ(content(), QJsonObject({{"key", true}}));
    EXPECT_THAT(reports, SizeIs(6)) << "read in vain, set aside";
    EXPECT_EQ(readFile(path + ".unreadable-1"), "{\"half\": tr");
}

TEST_F(FileDefaultsTest, AReadOnlyPlaceCostsThePersistenceAndOneLine) {
    path = "/proc/self/tarnwick/defaults.json";
    const auto defaults = open();
    defaults->set("a", true);
    defaults->set("b", "text");
    EXPECT_EQ(defaults->get<bool>("a"), true);
    EXPECT_EQ(defaults->get<QString>("b"), "text");
    EXPECT_THAT(reports, SizeIs(1));
}

TEST_F(FileDefaultsTest, AFullDiskKeepsTheOldFileAndWhatWasChangedForTheNextWrite) {
    const auto defaults = open();
    defaults->set("before", true);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{0, before.rlim_max}; // no byte can be written to a file
    ::setrlimit(RLIMIT_FSIZE, &full);
    defaults->set("during", true);
    defaults->set("during2", true);
    ::setrlimit(RLIMIT_FSIZE, &before);
    ::signal(SIGXFSZ, handler);
    EXPECT_THAT(reports, SizeIs(1));
    EXPECT_EQ(content(), QJsonObject({{"before", true}}));
    defaults->set("after", true);
    EXPECT_EQ(content().keys(), QStringList({"after", "before", "during", "during2"}));
    EXPECT_THAT(files(), ElementsAre("defaults.json"));
}

TEST_F(FileDefaultsTest, LateWritesAreAtMostTwentyASecondAndEndWithTheLastValue) {
    const auto defaults = open();
    const QString key = "WindowWidth";
    int writes = 0;
    double onDisk = 0;
    for (int i = 1; i <= 1000; ++i) {
        defaults->setSoon(key, double(i));
        EXPECT_EQ(defaults->get<double>(key), i) << "read back at once";
        dispatcher.advance(1ms);
        if (const double now = QFile::exists(path) ? content().value(key).toDouble() : 0; now != onDisk) {
            onDisk = now;
            ++writes;
        }
    }
    EXPECT_GE(writes, 15);
    EXPECT_LE(writes, 20);
    dispatcher.advance(1s);
    EXPECT_EQ(content().value(key).toDouble(), 1000);
}

TEST_F(FileDefaultsTest, TheLastLateValueIsWrittenAtTheEnd) {
    open()->setSoon("WindowWidth", 7.0);
    EXPECT_EQ(content().value("WindowWidth").toDouble(), 7);
}

TEST_F(FileDefaultsTest, TellsWhatAnotherProcessHasChangedAndNothingElse) {
    const auto defaults = open();
    defaults->set("mine", true);
    defaults->set("theirs", true);
    QSignalSpy changes(defaults.get(), &Defaults::changedElsewhere);
    open()->set("theirs", false);
    quieten();
    EXPECT_THAT(changes, ElementsAre(QVariantList{"theirs"}));
    EXPECT_EQ(defaults->get<bool>("theirs"), false);
}

TEST_F(FileDefaultsTest, ListsToWhichTwoProcessesAddLoseNothing) {
    const QString key = "list";
    const auto adding = [](const QString& item) {
        return [item](const std::optional<Value>& now) {
            QStringList list = now ? std::get<QStringList>(*now) : QStringList();
            return Value(list << item);
        };
    };
    const auto first = open();
    const auto second = open(); // neither looks at the other's changes in between
    EXPECT_TRUE(first->update(key, adding("a")));
    EXPECT_TRUE(second->update(key, adding("b")));
    EXPECT_TRUE(first->update(key, adding("c")));
    EXPECT_THAT(*first->get<QStringList>(key), ElementsAre("a", "b", "c"));
    EXPECT_TRUE(first->update("none", [](const auto&) { return std::nullopt; }));
    EXPECT_FALSE(content().contains("none"));
}

TEST_F(FileDefaultsTest, EveryChangeThatHasReturnedSurvivesKill9) {
    for (int round = 0; round < 10; ++round) {
        const QString prefix = QStringLiteral("round%1-").arg(round);
        const auto writer = startWriter(prefix, 1000);
        QByteArray said;
        while (said.count('\n') < 7 + 41 * round) {
            ASSERT_TRUE(writer->waitForReadyRead());
            said += writer->readAll();
        }
        writer->kill();
        ASSERT_TRUE(writer->waitForFinished());
        said += writer->readAll();
        ASSERT_EQ(writer->exitStatus(), QProcess::CrashExit) << "it was still at it";
        const auto defaults = open();
        const int returned = int(said.count('\n'));
        for (int i = 0; i < returned; ++i)
            ASSERT_EQ(defaults->get<double>(prefix + QString::number(i)), i) << qPrintable(prefix);
    }
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_THAT(files(), ElementsAre("defaults.json")) << "and leaves no litter";
}

TEST_F(FileDefaultsTest, TwoProcessesLoseNoneOfAThousandChangesEach) {
    const auto first = startWriter("first", 1000);
    const auto second = startWriter("second", 1000);
    for (QProcess* process : {first.get(), second.get()}) {
        ASSERT_TRUE(process->waitForFinished(100'000));
        ASSERT_EQ(process->exitCode(), 0);
    }
    const auto defaults = open();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(defaults->get<double>(QStringLiteral("first%1").arg(i)), i);
        ASSERT_EQ(defaults->get<double>(QStringLiteral("second%1").arg(i)), i);
    }
}

} // namespace
} // namespace tarnwick::defaults
