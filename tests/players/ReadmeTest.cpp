// The examples of the README, as they stand.

#include "tests/players/ProgramFixture.h"

#include <QRegularExpression>

namespace tarnwick {
namespace {

/// A command behind "$ ", and what is shown below it; a line "…" stands for any lines.
struct Example {
    QString command;
    QStringList shown;
};

QList<Example> examples() {
    QFile file(TARNWICK_README);
    QList<Example> found;
    if (!file.open(QIODevice::ReadOnly))
        return found;
    bool isInside = false;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.startsWith("```"))
            isInside = !isInside;
        else if (isInside && line.startsWith("$ "))
            found.append({line.mid(2), {}});
        else if (isInside && !found.isEmpty() && !line.isEmpty())
            found.last().shown.append(line);
    }
    return found;
}

using ReadmeTest = ProgramFixture;

TEST_F(ReadmeTest, ShowsWhatTheProgramDoes) {
    environment.insert("PATH", QFileInfo(TARNWICK_PROGRAM).path() + ':' + environment.value("PATH"));
    const QList<Example> all = examples();
    ASSERT_GE(all.size(), 5);
    for (const Example& example : all) {
        QProcess shell;
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(home.path());
        shell.start("bash", {"-c", example.command});
        ASSERT_TRUE(shell.waitForFinished(60'000)) << example.command.toStdString();
        EXPECT_EQ(shell.exitCode(), 0)
            << example.command.toStdString() << shell.readAllStandardError().toStdString();
        QString form = QRegularExpression::escape(example.shown.join('\n'));
        form.replace(QRegularExpression::escape("…"), "[^$]*");
        const QString printed = QString::fromUtf8(shell.readAllStandardOutput()).trimmed();
        EXPECT_TRUE(QRegularExpression("^" + form + "$").match(printed).hasMatch())
            << example.command.toStdString() << "\nprints\n"
            << printed.toStdString();
    }
}

} // namespace
} // namespace tarnwick
