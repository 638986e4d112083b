// Feeds the fuzz target without a fuzzer: every script of the tests as it stands, and cut, doubled and mixed
// in ways that are the same each time. TARNWICK_FUZZ_RUNS in the environment asks for more of them than
// usual.

#include "tests/fuzz/ScriptFuzz.h"

#include <QDirIterator>
#include <QFile>
#include <gmock/gmock.h>

#include <random>

namespace {

std::vector<QByteArray> corpus() {
    std::vector<QByteArray> texts;
    QStringList files;
    for (QDirIterator it(QStringLiteral(SCRIPTS_FOLDER), {QStringLiteral("*.applescript")}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        files.append(it.next());
    files.sort();
    for (const QString& name : files) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QString& each :
             QString::fromUtf8(file.readAll()).split(QStringLiteral("-- next script\n")))
            texts.push_back(each.toUtf8());
    }
    return texts;
}

void feed(const QByteArray& text) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.constData()),
                           static_cast<std::size_t>(text.size()));
}

class Mutator {
public:
    explicit Mutator(const std::vector<QByteArray>& from) : m_from(from) {}

    QByteArray next() {
        QByteArray text = pick();
        for (int times = 1 + number(4); times > 0; --times) {
            const qsizetype at = number(text.size() + 1);
            const qsizetype length = number(std::min<qsizetype>(text.size() - at, 40) + 1);
            switch (number(5)) {
            case 0:
                text.remove(at, length);
                break;
            case 1:
                text.insert(at, text.mid(at, length));
                break;
            case 2:
                text.insert(at, slice(pick()));
                break;
            case 3:
                text.insert(at, static_cast<char>(number(256)));
                break;
            default:
                text.insert(at, words[static_cast<std::size_t>(number(std::size(words)))]);
                break;
            }
        }
        return text;
    }

private:
    static constexpr const char* words[] = {" of ",       " every ",    " whose ", "(",
                                            ")",          "{",          "}",       "\n",
                                            " end ",      " tell ",     " it ",    " my ",
                                            "'s ",        " not ",      " -1 ",    " 9223372036854775807 ",
                                            " thru ",     " as ",       " \"\" ",  " set ",
                                            " to ",       " repeat\n",  " try\n",  " item ",
                                            " end of ",   " count ",    " error ", " result ",
                                            " return ",   " track ",    " is in ", " mod ",
                                            " round ",    " a ref to ", " in ",    " doesn't ",
                                            " offset of "};

    qsizetype number(qsizetype bound) {
        return static_cast<qsizetype>(m_random() % static_cast<unsigned long long>(bound));
    }
    const QByteArray& pick() {
        return m_from[static_cast<std::size_t>(number(static_cast<qsizetype>(m_from.size())))];
    }
    QByteArray slice(const QByteArray& text) { return text.mid(number(text.size()), number(60)); }

    const std::vector<QByteArray>& m_from;
    std::mt19937_64 m_random{1}; // NOLINT: the same each time
};

TEST(ScriptFuzz, SurvivesItsCorpus) {
    const std::vector<QByteArray> texts = corpus();
    ASSERT_FALSE(texts.empty());
    for (const QByteArray& text : texts)
        feed(text);
}

TEST(ScriptFuzz, SurvivesChangedTexts) {
    const std::vector<QByteArray> texts = corpus();
    ASSERT_FALSE(texts.empty());
    Mutator mutator(texts);
    const int more = qEnvironmentVariableIntValue("TARNWICK_FUZZ_RUNS");
    for (int i = 0; i < std::max(3000, more); ++i)
        feed(mutator.next());
}

} // namespace
