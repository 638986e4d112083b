#include "platform/dispatch/SystemDispatcher.h"
#include "tests/unit/defaults/FileDefaultsFixture.h"

#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdio>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace tarnwick::defaults {
namespace {

/// What somebody else's editor does to the file while it is in use.
using EditedFile = FileDefaultsFixture;

TEST_F(EditedFile, ReadsWhatIsWrittenIntoTheFileOnceItHasBeenQuiet) {
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

TEST_F(EditedFile, AFileThatIsGoneOrBrokenKeepsWhatWasKnownUntilTheNextAssignment) {
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

TEST_F(EditedFile, AssignmentsWaitForAWriterWhoIsHalfWay) {
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

TEST_F(EditedFile, AWriterWhoIsNeverDoneIsLeftAlone) {
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

TEST_F(EditedFile, EditorsThatSaveAgainAndAgainLoseNothingAndTriggerNothing) {
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

} // namespace
} // namespace tarnwick::defaults
