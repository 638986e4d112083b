#include "platform/defaults/FileDefaults.h"

#include "platform/dispatch/SystemDispatcher.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/Files.h"

#include <QJsonDocument>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace tarnwick::defaults {
namespace {

class FileDefaultsTest : public testing::Test {
protected:
    void fill(const QByteArray& bytes) { writeFile(path, bytes); }

    QJsonObject content() {
        const auto document = QJsonDocument::fromJson(readFile(path));
        EXPECT_TRUE(document.isObject());
        return document.object();
    }

    std::unique_ptr<FileDefaults> open() {
        return std::make_unique<FileDefaults>(path, dispatcher,
                                              [this](const QString& line) { reports.append(line); });
    }

    std::unique_ptr<QProcess> startWriter(const QString& prefix, int count) {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QStringLiteral(DEFAULTS_WRITER), {path, prefix, QString::number(count)});
        return process;
    }

    /// The watcher's news, and the time that they are left to settle.
    void quieten() {
        QCoreApplication::processEvents();
        dispatcher.advance(DefaultsFile::quietTime);
    }

    /// Names in the file's folder, without the lock.
    QStringList files() {
        auto names = QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden);
        names.removeAll("defaults.json.lock");
        return names;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("tarnwick/defaults.json");
    dispatch::VirtualDispatcher dispatcher;
    QStringList reports;
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

TEST_F(FileDefaultsTest, ReadsWhatIsWrittenIntoTheFileOnceItHasBeenQuiet) {
    fill(R"({"a": 1, "b": 1})");
    const auto defaults = open();
    QSignalSpy changes(defaults.get(), &Defaults::changedElsewhere);
    for (const QByteArray bytes : {"", R"({"a": 1, )", R"({"a": 1, "b": 2})"}) { // in place, step by step
        fill(bytes);
        QCoreApplication::processEvents();
        dispatcher.advance(149ms);
        EXPECT_EQ(defaults->get<double>("b"), 1);
    }
    EXPECT_THAT(changes, IsEmpty());
    dispatcher.advance(1ms);
    EXPECT_THAT(changes, ElementsAre(QVariantList{"b"}));
    EXPECT_EQ(defaults->get<double>("b"), 2);

    // And again in a file that has taken the place of the first, which lives on as the backup.
    ASSERT_EQ(::link(qPrintable(path), qPrintable(path + "~")), 0);
    const QString replacement = writeFile(path + ".new", R"({"a": 1, "b": 3})");
    ASSERT_EQ(std::rename(qPrintable(replacement), qPrintable(path)), 0);
    quieten();
    fill(R"({"a": 1, "b": 4})");
    quieten();
    EXPECT_EQ(defaults->get<double>("b"), 4);
    EXPECT_THAT(changes, SizeIs(3));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(FileDefaultsTest, AFileThatIsGoneOrBrokenKeepsWhatWasKnownUntilTheNextAssignment) {
    const auto remove = [this] { QFile::remove(path); };
    const auto breakIt = [this] { fill("nonsense"); };
    const std::pair<const char*, std::function<void()>> rows[] = {{"gone", remove}, {"broken", breakIt}};
    int number = 0;
    for (const auto& [what, harm] : rows) {
        fill(R"({"kept": true, "future": {"nested": 1}})");
        const auto defaults = open();
        QSignalSpy changes(defaults.get(), &Defaults::changedElsewhere);
        harm();
        quieten();
        EXPECT_THAT(changes, IsEmpty()) << what;
        EXPECT_EQ(defaults->get<bool>("kept"), true) << what;
        EXPECT_THAT(files().filter("unreadable"), SizeIs(number)) << "reading moves nothing: " << what;

        const auto before = dispatcher.now();
        EXPECT_TRUE(defaults->set("after", true)) << what;
        EXPECT_EQ(dispatcher.now(), before) << "it was quiet for long enough: " << what;
        EXPECT_EQ(
            content(),
            QJsonDocument::fromJson(R"({"after": true, "future": {"nested": 1}, "kept": true})").object())
            << what;
        number += what == QByteArray("broken") ? 1 : 0;
        EXPECT_THAT(files().filter("unreadable"), SizeIs(number)) << what;
    }
    EXPECT_EQ(readFile(path + ".unreadable-1"), "nonsense");
}

TEST_F(FileDefaultsTest, AssignmentsWaitForAWriterWhoIsHalfWay) {
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"truncated", [this] { fill(""); }},
        {"half", [this] { fill(R"({"edited": tr)"); }},
        {"renamed", [this] { EXPECT_EQ(std::rename(qPrintable(path), qPrintable(path + "~")), 0); }}};
    const std::function<void(FileDefaults&)> assignments[] = {
        [](FileDefaults& defaults) { EXPECT_TRUE(defaults.set("mine", true)); },
        [](FileDefaults& defaults) {
            EXPECT_TRUE(defaults.update("mine", [](const auto&) { return Value(true); }));
        }};
    for (const auto& [what, begin] : rows) {
        for (const auto& assign : assignments) {
            fill(R"({"edited": false})");
            const auto defaults = open();
            defaults->set("mine", false);
            begin();
            auto end = dispatcher.asyncAfter(dispatcher.mainQueue(), 140ms,
                                             [this] { fill(R"({"edited": true, "new": 1})"); });
            assign(*defaults);
            EXPECT_EQ(content(), QJsonObject({{"edited", true}, {"mine", true}, {"new", 1}})) << what;
            EXPECT_THAT(files().filter("unreadable"), IsEmpty()) << what;
        }
        begin(); // a process that starts in the middle
        auto end =
            dispatcher.asyncAfter(dispatcher.mainQueue(), 140ms, [this] { fill(R"({"whole": true})"); });
        EXPECT_EQ(open()->get<bool>("whole"), true) << what;
    }
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(FileDefaultsTest, AWriterWhoIsNeverDoneIsLeftAlone) {
    const auto defaults = open();
    defaults->set("before", true);
    int written = 0;
    const auto writer = dispatcher.makeTimer(dispatcher.mainQueue(), 50ms, [&] {
        if (++written < 100)
            fill("{\"long\": \"" + QByteArray(written, 'x'));
    });
    fill("{");
    EXPECT_FALSE(defaults->set("mine", true));
    EXPECT_EQ(defaults->get<bool>("mine"), true);
    EXPECT_THAT(files().filter("unreadable"), IsEmpty());
    EXPECT_THAT(reports, SizeIs(1));
    writer->cancel();
    fill(R"({"long": "text"})");
    quieten();
    EXPECT_TRUE(defaults->set("next", true));
    EXPECT_EQ(content(), QJsonObject({{"long", "text"}, {"mine", true}, {"next", true}}));
}

TEST_F(FileDefaultsTest, EditorsThatSaveAgainAndAgainLoseNothingAndTriggerNothing) {
    QByteArray text =
        "{\"kept\": true, \"changed\": false, \"padding\": \"" + QByteArray(20'000, '.') + "\"}";
    fill(text);
    writeFile(path + ".lock", {});
    dispatch::SystemDispatcher real;
    const auto defaults =
        std::make_unique<FileDefaults>(path, real, [this](const QString& line) { reports.append(line); });
    QSignalSpy changes(defaults.get(), &Defaults::changedElsewhere);
    const auto save = [&](int number) {
        const auto step = [&] { QTest::qWait(number % 4); };
        writeFile(QFileInfo(path).path() + "/4913", {}); // whether the folder can be written
        QFile::remove(QFileInfo(path).path() + "/4913");
        if (number % 3 != 0) {
            step();
            ASSERT_TRUE(QFile::rename(path, path + "~"));
        }
        step();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered));
        step();
        file.write(text.left(8192));
        step();
        file.write(text.mid(8192));
        file.close();
        step();
        QFile::remove(path + "~");
    };
    for (int number = 0; number < 60; ++number) {
        save(number);
        QTest::qWait(number % 10 == 0 ? 200 : number % 7);
    }
    EXPECT_THAT(changes, IsEmpty());
    text.replace("false", "true");
    save(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !changes.isEmpty(); }));
    EXPECT_THAT(changes, ElementsAre(QVariantList{"changed"}));
    EXPECT_EQ(readFile(path), text);
    EXPECT_THAT(files(), ElementsAre("defaults.json"));
    EXPECT_THAT(reports, IsEmpty());
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
