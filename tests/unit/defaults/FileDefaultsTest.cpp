#include "platform/defaults/FileDefaults.h"

#include "platform/dispatch/VirtualDispatcher.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace tarnwick::defaults {
namespace {

class FileDefaultsTest : public testing::Test {
protected:
    void fill(const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QJsonObject content() {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const auto document = QJsonDocument::fromJson(file.readAll());
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

    /// Names in the file's folder, without the lock.
    QStringList files() {
        auto names = QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden);
        names.removeAll(QStringLiteral("defaults.json.lock"));
        return names;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("tarnwick/defaults.json"));
    dispatch::VirtualDispatcher dispatcher;
    QStringList reports;
};

TEST_F(FileDefaultsTest, EveryTypeComesBackAsItself) {
    const QStringList names{QStringLiteral("a\n\"b\""), QString(), QStringLiteral("遠い海")};
    {
        const auto defaults = open();
        defaults->set(QStringLiteral("bool"), true);
        defaults->set(QStringLiteral("number"), 0.1);
        defaults->set(QStringLiteral("text"), QStringLiteral("true"));
        defaults->set(QStringLiteral("texts"), names);
        defaults->set(QStringLiteral("none"), QStringList());
    }
    const auto defaults = open();
    EXPECT_EQ(defaults->get<bool>(QStringLiteral("bool")), true);
    EXPECT_EQ(defaults->get<double>(QStringLiteral("number")), 0.1);
    EXPECT_EQ(defaults->get<QString>(QStringLiteral("text")), QStringLiteral("true"));
    EXPECT_EQ(defaults->get<bool>(QStringLiteral("text")), std::nullopt) << "a text is no boolean";
    EXPECT_EQ(defaults->get<QStringList>(QStringLiteral("texts")), names);
    EXPECT_EQ(defaults->get<QStringList>(QStringLiteral("none")), QStringList());
    EXPECT_EQ(defaults->value(QStringLiteral("missing")), std::nullopt);
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(FileDefaultsTest, KeepsWhatItDoesNotKnow) {
    fill(R"({"future": {"nested": [1, null]}, "mixed": [1, "a"], "preventSleep": true})");
    open()->set(QStringLiteral("preventSleep"), false);
    EXPECT_EQ(content(), QJsonDocument::fromJson(
                             R"({"future": {"nested": [1, null]}, "mixed": [1, "a"], "preventSleep": false})")
                             .object());
    EXPECT_EQ(open()->value(QStringLiteral("mixed")), std::nullopt);
}

TEST_F(FileDefaultsTest, SetsAsideWhatCannotBeRead) {
    for (const char* bytes : {"{\"half\": tr", "[1, 2]", ""}) {
        fill(bytes);
        const auto defaults = open();
        EXPECT_EQ(defaults->value(QStringLiteral("half")), std::nullopt);
        defaults->set(QStringLiteral("key"), true);
    }
    EXPECT_THAT(files(),
                ElementsAre(QStringLiteral("defaults.json"), QStringLiteral("defaults.json.unreadable-1"),
                            QStringLiteral("defaults.json.unreadable-2"),
                            QStringLiteral("defaults.json.unreadable-3")));
    EXPECT_EQ(content(), QJsonObject({{QStringLiteral("key"), true}}));
    EXPECT_THAT(reports, SizeIs(3));
    QFile aside(path + QStringLiteral(".unreadable-1"));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), "{\"half\": tr");
}

TEST_F(FileDefaultsTest, AFileThatBreaksWhileItIsInUseIsSetAsideByTheNextChange) {
    const auto defaults = open();
    defaults->set(QStringLiteral("before"), true);
    fill("nonsense");
    defaults->set(QStringLiteral("after"), true);
    EXPECT_EQ(content(), QJsonObject({{QStringLiteral("after"), true}}));
    EXPECT_THAT(files(), SizeIs(2));
}

TEST_F(FileDefaultsTest, AReadOnlyPlaceCostsThePersistenceAndOneLine) {
    path = QStringLiteral("/proc/self/tarnwick/defaults.json");
    const auto defaults = open();
    defaults->set(QStringLiteral("a"), true);
    defaults->set(QStringLiteral("b"), QStringLiteral("text"));
    EXPECT_EQ(defaults->get<bool>(QStringLiteral("a")), true);
    EXPECT_EQ(defaults->get<QString>(QStringLiteral("b")), QStringLiteral("text"));
    EXPECT_THAT(reports, SizeIs(1));
}

/// No byte can be written to a file as long as it lives.
class FullDisk {
public:
    FullDisk() {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit full{0, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }

private:
    sighandler_t m_handler = ::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

TEST_F(FileDefaultsTest, AFullDiskKeepsTheOldFileAndWhatWasChangedForTheNextWrite) {
    const auto defaults = open();
    defaults->set(QStringLiteral("before"), true);
    {
        const FullDisk full;
        defaults->set(QStringLiteral("during"), true);
        defaults->set(QStringLiteral("during2"), true);
    }
    EXPECT_THAT(reports, SizeIs(1));
    EXPECT_EQ(content(), QJsonObject({{QStringLiteral("before"), true}}));
    defaults->set(QStringLiteral("after"), true);
    EXPECT_EQ(content().keys(), QStringList({QStringLiteral("after"), QStringLiteral("before"),
                                             QStringLiteral("during"), QStringLiteral("during2")}));
    EXPECT_THAT(files(), ElementsAre(QStringLiteral("defaults.json")));
}

TEST_F(FileDefaultsTest, LateWritesAreAtMostTwentyASecondAndEndWithTheLastValue) {
    const auto defaults = open();
    const QString key = QStringLiteral("WindowWidth");
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
    open()->setSoon(QStringLiteral("WindowWidth"), 7.0);
    EXPECT_EQ(content().value(QStringLiteral("WindowWidth")).toDouble(), 7);
}

TEST_F(FileDefaultsTest, TellsWhatAnotherProcessHasChangedAndNothingElse) {
    const auto defaults = open();
    defaults->set(QStringLiteral("mine"), true);
    defaults->set(QStringLiteral("theirs"), true);
    QSignalSpy changes(defaults.get(), &Defaults::changedElsewhere);
    open()->set(QStringLiteral("theirs"), false);
    ASSERT_TRUE(changes.wait());
    EXPECT_THAT(changes, ElementsAre(QVariantList{QStringLiteral("theirs")}));
    EXPECT_EQ(defaults->get<bool>(QStringLiteral("theirs")), false);

    changes.clear();
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(changes.wait());
    EXPECT_EQ(defaults->value(QStringLiteral("mine")), std::nullopt) << "back to nothing, as the file is";
}

TEST_F(FileDefaultsTest, ListsToWhichTwoProcessesAddLoseNothing) {
    const QString key = QStringLiteral("list");
    const auto adding = [](const QString& item) {
        return [item](const std::optional<Value>& now) {
            QStringList list = now ? std::get<QStringList>(*now) : QStringList();
            return Value(list << item);
        };
    };
    const auto first = open();
    const auto second = open(); // neither looks at the other's changes in between
    EXPECT_TRUE(first->update(key, adding(QStringLiteral("a"))));
    EXPECT_TRUE(second->update(key, adding(QStringLiteral("b"))));
    EXPECT_TRUE(first->update(key, adding(QStringLiteral("c"))));
    EXPECT_THAT(*first->get<QStringList>(key), ElementsAre("a", "b", "c"));
    EXPECT_TRUE(first->update(QStringLiteral("none"), [](const auto&) { return std::nullopt; }));
    EXPECT_FALSE(content().contains(QStringLiteral("none")));
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
    EXPECT_THAT(files(), ElementsAre(QStringLiteral("defaults.json"))) << "and leaves no litter";
}

TEST_F(FileDefaultsTest, TwoProcessesLoseNoneOfAThousandChangesEach) {
    const auto first = startWriter(QStringLiteral("first"), 1000);
    const auto second = startWriter(QStringLiteral("second"), 1000);
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
