// Runs every text under tests/scripts and compares what happens with the expectations in its comments:
//
//   -- expect: TEXT         the next thing to happen: a text that is logged; `dialog: TEXT`;
//                           `delay: SECONDS`; what is done to the application: `play current track`,
//                           `set sound volume to 42`
//   -- expect reply: TEXT   how the script ends, as a script writes it
//   -- expect error: TEXT   the script ends with this error, on this line; `at COLUMN: TEXT` names the column
//   too
//   -- given: WORDS         before: `stopped`, `paused`, `not running`, `no facts`, `no track`
//   -- next script          another script in the same file
//
// A folder is named after the source file that is to blame when something in it fails. The texts that the
// program itself sends are run in the same way.

#include "music/Scripts.h"

#include "script/run/Host.h"
#include "script/run/Interpreter.h"
#include "script/values/Application.h"
#include "script/values/Printer.h"
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
    library->tracks = {{"Due", "Aria", "Prima", 2, 1, false, 200.0},
                       {"Uno", "Aria", "Prima", 1, 1, false, 245.5},
                       {"Zero", "Altri", "Prima", 3, 1, false, 10.0},
                       {"Fine", "Aria", "PRIMA", 1, 2, false, 12345.0},
                       {R"(Say "x" \ y)", "Aria", R"(L'altra "volta")", 1, 1, true, 1.0}};
    const auto isGiven = [&](const char* words) {
        return source.contains(QLatin1String("-- given: ") + QLatin1String(words));
    };
    if (!isGiven("no facts")) {
        players::Track& known = library->tracks[1].facts;
        known.genre = "Pop";
        known.comment = "Italy";
        known.grouping = "Gruppo";
        known.kind = "Apple Lossless audio file";
        known.year = 2001;
        known.discCount = 2;
        known.bitRate = 1024;
        known.sampleRate = 44100;
        known.size = 30'000'000'000;
        library->artwork = "cover";
    }
    if (isGiven("no title"))
        library->tracks[1].name.clear();
    if (isGiven("no albums"))
        for (auto& track : library->tracks)
            track.album.clear();
    library->current = isGiven("no track") ? 1000 : 1;
    library->running = !isGiven("not running");
    library->state = isGiven("stopped") || !library->running ? players::PlayerState::Stopped
                     : isGiven("paused")                     ? players::PlayerState::Paused
                                                             : players::PlayerState::Playing;
    library->playlists = {"Musica", R"(Jazz "live")"};
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

/// Runs a script with expectations in its comments.
void expectWhatItSays(const QString& source) {
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
        expectWhatItSays(source);
        begin += static_cast<int>(source.count(QLatin1Char('\n'))) + 1;
    }
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptTest, testing::ValuesIn(scriptFiles()), [](const auto& test) {
    std::string name = test.param.substr(0, test.param.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
});

TEST(MusicTexts, DoWhatTheyAreFor) {
    const QString facts = QStringLiteral(
        R"(-- expect reply: {"Uno", "Aria", "Prima", 2001, 1, 1, 2, "Gruppo", "Apple Lossless audio file", "Italy", «data tdta636F766572», "%1", 245.5, 12.5, {"Due", "Uno", "Zero", "Fine"}, {200.0, 245.5, 10.0, 1.2345E+4}, "Pop", 1024, 30000000000, 44.1})");
    const auto title = [](const char* name, const char* album = "Prima") {
        return scripts::playTitle(QString::fromUtf8(name), QString::fromUtf8(album));
    };
    const struct {
        QString text;
        QString comments;
    } rows[] = {
        {scripts::nowPlaying(), facts.arg("playing")},
        {scripts::nowPlaying(), "-- given: paused\n" + facts.arg("paused")},
        {scripts::nowPlaying(),
         R"(-- given: no facts
            -- expect reply: {"Uno", "Aria", "Prima", 0, 1, 1, 0, "", "", "", missing value, "playing", 245.5, 12.5, {"Due", "Uno", "Zero", "Fine"}, {200.0, 245.5, 10.0, 1.2345E+4}, "", 0, 0, 0.0})"},
        {scripts::nowPlaying(),
         R"(-- given: no facts
            -- given: no title
            -- expect reply: {"Titolo sconosciuto", "Aria", "Prima", 0, 1, 1, 0, "", "", "", missing value, "playing", 245.5, 12.5, {"Due", "", "Zero", "Fine"}, {200.0, 245.5, 10.0, 1.2345E+4}, "", 0, 0, 0.0})"},
        {scripts::tracksByDisc(), R"(-- given: no title
            -- expect reply: {{1, {{1, ""}, {2, "Due"}}}, {2, {{1, "Fine"}}}})"},
        {title("Due", ""), "-- given: no albums\n-- expect: play track 1 of library playlist 1"},
        {scripts::nowPlaying(),
         R"(-- given: stopped
            -- expect reply: {"", "", "", "", 0, 0, 0, "Gruppo sconosciuto", "", "Nessun commento", missing value, "stopped", 0, 0, {}, {}, "Genere sconosciuto", 0, 0, 0})"},
        {scripts::tracksByDisc(), R"(-- expect reply: {{1, {{1, "Uno"}, {2, "Due"}}}, {2, {{1, "Fine"}}}})"},
        {scripts::tracksByDisc(),
         "-- given: stopped\n-- expect reply: \"Nessuna traccia in riproduzione o pausa.\""},
        {scripts::currentPlaylist(), "-- expect reply: \"Musica\""},
        {scripts::currentPlaylist(), "-- given: stopped\n-- expect reply: \"\""},
        {scripts::trackLocation(), "-- expect reply: \"/music/Uno.flac\""},
        {scripts::trackLocation(), "-- given: stopped\n-- expect reply: \"\""},
        {scripts::discNumber(), "-- expect reply: 1"},
        {scripts::discNumber(), "-- given: stopped\n-- expect reply: missing value"},
        {scripts::playlistNames(), R"(-- expect reply: {"Musica", "Jazz \"live\""})"},
        {scripts::playPause(), "-- expect: pause"},
        {scripts::playPause(), "-- given: paused\n-- expect: play"},
        {scripts::playPause(),
         "-- given: not running\n-- expect: launch\n-- expect: delay: 0.1\n-- expect: play"},
        {scripts::nextTrack(), "-- expect: next track"},
        {scripts::previousTrack(), "-- given: paused\n-- expect: previous track"},
        {scripts::nextTrack(), "-- given: stopped"},
        {scripts::startupPlaylist(), "-- expect: play user playlist \"Musica\""},
        {scripts::startupPlaylist(), "-- given: not running\n-- expect: launch\n-- expect: delay: 2\n"
                                     "-- expect: play user playlist \"Musica\""},
        {scripts::getVolume(), "-- expect reply: 30"},
        {scripts::setVolume(0.999), "-- expect: set sound volume to 99\n-- expect reply: 99"},
        {scripts::getShuffle(), "-- expect reply: false"},
        {scripts::toggleShuffle(), "-- expect: set shuffle enabled to true\n-- expect reply: true"},
        {scripts::playPlaylist("Jazz \"live\""), R"(-- expect: play user playlist "Jazz \"live\"")"},
        {scripts::playPlaylist("Manca"),
         R"(-- expect reply: "Music got an error: Can’t get playlist \"Manca\".")"},
        {title("Fine"), "-- expect: play track 4 of library playlist 1"},
        {title(R"(Say "x" \ y)", R"(L'altra "volta")"), "-- expect: play track 5 of library playlist 1"},
        {title("Manca"),
         R"(-- expect: dialog: Errore: Il brano 'Manca' non è disponibile nell'album 'Prima'.
            -- expect: Errore AppleScript: Music got an error: Can’t get first track of library playlist 1 whose name is "Manca" and album is "Prima".)"},
        {title("Fine"),
         "-- given: stopped\n-- expect: dialog: Errore: La riproduzione non è attualmente attiva."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text.left(120).toStdString() + "\n" + row.comments.left(120).toStdString());
        expectWhatItSays(row.text + QLatin1Char('\n') + row.comments);
    }
}

} // namespace
