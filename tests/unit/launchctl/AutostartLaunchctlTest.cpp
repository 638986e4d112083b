#include "platform/launchctl/DesktopEntry.h"
#include "platform/launchctl/Launchctl.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick::launchctl {
namespace {

/// The value of `key` in a desktop entry, with the escapes of its texts undone.
QString entryValue(const QString& entry, const QString& key) {
    for (const QString& line : entry.split(u'\n')) {
        if (!line.startsWith(key + u'='))
            continue;
        QString value;
        for (qsizetype i = key.size() + 1; i < line.size(); ++i) {
            if (line[i] != u'\\') {
                value += line[i];
                continue;
            }
            const QChar escaped = line[++i];
            value += escaped == u'n' ? QChar(u'\n') : escaped == u't' ? QChar(u'\t') : escaped;
        }
        return value;
    }
    return {};
}

/// Runs a command line the way a desktop does; its quoting is a part of the shell's.
int runExec(QString command) {
    command.replace(QStringLiteral("%%"), QStringLiteral("%"));
    return QProcess::execute(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
}

class AutostartLaunchctlTest : public testing::Test {
protected:
    QString write(const QString& name, const QString& text) {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
        file.write(text.toUtf8());
        return path;
    }
    QString read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    QString writeAgent(const QString& name, const QString& program) {
        return write(name, QStringLiteral("<plist version=\"1.0\"><dict><key>Label</key>"
                                          "<string>org.example.Player</string><key>ProgramArguments</key>"
                                          "<array><string>%1</string><!-- a comment -->"
                                          "<string>--launched-at-login</string></array>"
                                          "<key>RunAtLoad</key><true/></dict></plist>")
                               .arg(program.toHtmlEscaped()));
    }
    QString bootstrap(const QString& file) {
        return launchctl.run({QStringLiteral("bootstrap"), QStringLiteral("gui/1000"), file});
    }

    QTemporaryDir folder;
    QString autostart = folder.filePath(QStringLiteral("config/autostart"));
    QString entry = autostart + QStringLiteral("/org.example.Player.desktop");
    AutostartLaunchctl launchctl{autostart};
};

TEST_F(AutostartLaunchctlTest, TheEntryIsValidAndStartsTheProgramWhateverItsPath) {
    for (const char* name : {"plain", "with some spaces", "it's \"quoted\" & <odd>", "100% $HOME `id` \\n"}) {
        const QString output = folder.filePath(QStringLiteral("output"));
        QFile::remove(output);
        const QString program = write(QString::fromUtf8(name),
                                      QStringLiteral("#!/bin/sh\nprintf '%s|%s' \"$0\" \"$*\" > ") + output);
        ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
        const QString agent = writeAgent(QString::fromUtf8(name) + QStringLiteral(".plist"), program);
        ASSERT_EQ(bootstrap(agent), QString());

        EXPECT_EQ(QProcess::execute(QStringLiteral("desktop-file-validate"), {entry}), 0) << name;
        const QString exec = entryValue(read(entry), QStringLiteral("Exec"));
        EXPECT_EQ(runExec(exec), 0) << name;
        EXPECT_EQ(read(output), program + QStringLiteral("|--launched-at-login")) << name;

        QFile::remove(output);
        QFile::remove(agent);
        runExec(exec);
        EXPECT_FALSE(QFile::exists(output)) << "nothing starts once the agent's file is gone";
    }
}

TEST_F(AutostartLaunchctlTest, UnloadingKeepsTheNextLoginsStartAndForgettingEndsIt) {
    const QString agent = writeAgent(QStringLiteral("a.plist"), QStringLiteral("/bin/true"));
    bootstrap(agent);
    const QString other = autostart + QStringLiteral("/other.desktop");
    ASSERT_TRUE(QFile::copy(entry, other));
    QFile file(other);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nName=Other\nExec=true\n");
    file.close();

    launchctl.run({QStringLiteral("unload"), agent});
    EXPECT_TRUE(QFile::exists(entry));
    launchctl.forget(agent);
    EXPECT_THAT(QDir(autostart).entryList(QDir::Files), ElementsAre(QStringLiteral("other.desktop")));
}

TEST_F(AutostartLaunchctlTest, SaysWhatItCannotDoAndIgnoresWhatIsNoAgent) {
    EXPECT_NE(bootstrap(folder.filePath(QStringLiteral("missing"))), QString());
    EXPECT_EQ(bootstrap(write(QStringLiteral("b"), QStringLiteral("<plist><dict>"))), QString());
    EXPECT_THAT(QDir(autostart).entryList(QDir::Files), IsEmpty());
    AutostartLaunchctl nowhere(QStringLiteral("/proc/self/autostart"));
    const QString agent = writeAgent(QStringLiteral("a.plist"), QStringLiteral("/bin/true"));
    EXPECT_NE(nowhere.run({QStringLiteral("bootstrap"), QStringLiteral("gui/0"), agent}), QString());
}

} // namespace
} // namespace tarnwick::launchctl
