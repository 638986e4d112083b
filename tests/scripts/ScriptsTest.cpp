// Runs every text under tests/scripts and compares what happens with the expectations in its comments:
//
//   -- expect: TEXT         the next thing to happen: a text that is logged; `dialog: TEXT`, `delay:
//   SECONDS`; what is
//                           done to the application: `play track 2`, `set sound volume to 42`
//   -- expect reply: TEXT   how the script ends, as a script writes it
//   -- expect error: TEXT   the script ends with this error, on this line; `at COLUMN: TEXT` names the column
//   too
//   -- given: WORDS         before: `stopped`, `paused`, `not running`, `no facts`, `no artwork`, `no track`
//   -- next script          another script in the same file
//
// A folder is named after the source file that is to blame when something in it fails.

#include "platform/script/Application.h"
#include "platform/script/Host.h"
#include "platform/script/Interpreter.h"
#include "platform/script/Printer.h"
#include "tests/fakes/FakeMusic.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>

using namespace tarnwick;
using namespace tarnwick::script;

namespace {

class RecordingHost final : public Host {
public:
    explicit RecordingHost(QStringList& record) : m_record(record) {}
    void log(const QString& text) override { m_record.append(text); }
    void displayDialog(const QString& text) override { m_record.append(QStringLiteral("dialog: ") + text); }
    void delay(std::chrono::nanoseconds duration) override {
        m_record.append(QStringLiteral("delay: %1").arg(static_cast<double>(duration.count()) / 1e9));
    }
    quint32 random(quint32 bound) override { return bound - 1; }

private:
    QStringList& m_record;
};

struct Expectations {
    QStringList happenings;
    QString reply;
    QString error;
    int errorLine = 0;
    bool hasColumn = false;
};

Expectations expectationsOf(const QString& source) {
    static const QRegularExpression pattern(
        QStringLiteral("-- expect( reply| error| error at)?: ?(.*)$|-- expect error at (\\d+): (.*)$"));
    Expectations expected;
    const QStringList lines = source.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = pattern.match(lines[i]);
        if (!match.hasMatch())
            continue;
        if (!match.captured(3).isEmpty()) {
            expected.errorLine = i + 1;
            expected.hasColumn = true;
            expected.error = match.captured(3) + QStringLiteral(": ") + match.captured(4);
        } else if (match.captured(1) == QLatin1String(" error")) {
            expected.errorLine = i + 1;
            expected.error = match.captured(2);
        } else if (match.captured(1) == QLatin1String(" reply")) {
            expected.reply = match.captured(2);
        } else {
            expected.happenings.append(match.captured(2));
        }
    }
    return expected;
}

std::shared_ptr<fakes::FakeLibrary> libraryFor(const QString& source) {
    auto library = std::make_shared<fakes::FakeLibrary>();
    const QString band = QStringLiteral("Aria");
    library->tracks = {
        {QStringLiteral("Due"), band, QStringLiteral("Prima"), 2, 1, false, 200.0},
        {QStringLiteral("Uno"), band, QStringLiteral("Prima"), 1, 1, false, 245.5},
        {QStringLiteral("Zero"), QStringLiteral("Altri"), QStringLiteral("Prima"), 3, 1, false, 10.0},
        {QStringLiteral("Fine"), band, QStringLiteral("PRIMA"), 1, 2, false, 12345.0},
        {QStringLiteral("Say \"x\" \\ y"), band, QStringLiteral("L'altra \"volta\""), 1, 1, true, 1.0},
    };
    const auto text = [](const char* value) { return Value::text(QString::fromUtf8(value)); };
    if (!source.contains(QLatin1String("-- given: no facts")))
        library->tracks[1].facts = {{QStringLiteral("year"), Value::integer(2001)},
                                    {QStringLiteral("disc count"), Value::integer(2)},
                                    {QStringLiteral("grouping"), text("Gruppo")},
                                    {QStringLiteral("kind"), text("Apple Lossless audio file")},
                                    {QStringLiteral("comment"), Value::missing()},
                                    {QStringLiteral("data"), Value::missing()},
                                    {QStringLiteral("genre"), text("Pop")},
                                    {QStringLiteral("bit rate"), Value::integer(1024)},
                                    {QStringLiteral("size"), Value::integer(30'000'000'000)},
                                    {QStringLiteral("sample rate"), Value::integer(44100)}};
    if (source.contains(QLatin1String("-- given: no artwork")))
        library->tracks[1].facts.remove(QStringLiteral("data"));
    library->current = source.contains(QLatin1String("-- given: no track")) ? 1000 : 1;
    for (const char* state : {"stopped", "paused"}) {
        if (source.contains(QStringLiteral("-- given: %1").arg(QLatin1String(state))))
            library->state = QString::fromLatin1(state);
    }
    if (source.contains(QLatin1String("-- given: not running"))) {
        library->running = false;
        library->state = QStringLiteral("stopped");
    }
    library->playlists = {QStringLiteral("Musica"), QStringLiteral("Jazz \"live\"")};
    library->makeIndex();
    return library;
}

/// The scripts by their path from here.
std::vector<std::string> scriptFiles() {
    const QDir folder(QStringLiteral(SCRIPTS_FOLDER));
    std::vector<std::string> files;
    for (QDirIterator it(folder.path(), {QStringLiteral("*.applescript")}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        files.push_back(folder.relativeFilePath(it.next()).toStdString());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> texts(const QStringList& from) {
    std::vector<std::string> to;
    for (const QString& each : from)
        to.push_back(each.toStdString());
    return to;
}

class ScriptTest : public testing::TestWithParam<std::string> {};

TEST_P(ScriptTest, MeetsItsExpectations) {
    QFile file(QStringLiteral(SCRIPTS_FOLDER "/") + QString::fromStdString(GetParam()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto decoded = decodeSource(file.readAll());
    ASSERT_TRUE(std::holds_alternative<QString>(decoded));
    int begin = 1;
    for (const QString& source : std::get<QString>(decoded).split(QStringLiteral("-- next script\n"))) {
        SCOPED_TRACE(testing::Message() << "the script that begins on line " << begin);
        const Expectations expected = expectationsOf(source);
        const auto library = libraryFor(source);
        fakes::FakeProvider provider(library);
        Interpreter interpreter(provider);
        RecordingHost host(library->record);
        const Outcome outcome = interpreter.run(source, host);

        EXPECT_THAT(texts(library->record), testing::ElementsAreArray(texts(expected.happenings)));
        const QString place = outcome.error ? outcome.error->toStringWithPlace() : QString();
        QString error = outcome.error ? outcome.error->toString() : QString();
        if (outcome.error && expected.hasColumn)
            error.prepend(QString::number(outcome.error->range.column) + QStringLiteral(": "));
        EXPECT_EQ(error.toStdString(), expected.error.toStdString()) << place.toStdString();
        if (outcome.error && !expected.error.isEmpty()) {
            EXPECT_EQ(outcome.error->range.line, expected.errorLine);
        }
        if (!expected.reply.isEmpty() && outcome.reply) {
            EXPECT_EQ(literal(*outcome.reply).toStdString(), expected.reply.toStdString());
        }
        EXPECT_TRUE(expected.reply.isEmpty() || outcome.reply);
        begin += static_cast<int>(source.count(QLatin1Char('\n'))) + 1;
    }
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptTest, testing::ValuesIn(scriptFiles()), [](const auto& test) {
    std::string name = test.param.substr(0, test.param.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
});

} // namespace
