#include "platform/launchctl/DesktopEntry.h"
#include "platform/launchctl/Launchctl.h"
#include "tests/fakes/Files.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick::launchctl {
namespace {

/// The value of `key` in a desktop entry, with the backslashes of its text undone.
QString entryValue(const QString& entry, const QString& key) {
    const QRegularExpression line("^" + key + "=(.*)$", QRegularExpression::MultilineOption);
    return line.match(entry).captured(1).replace(QRegularExpression(R"(\\(.))"), R"(\1)");
}

/// Runs a command line the way a desktop does; its quoting is a part of the shell's.
int runExec(QString command) {
    command.replace("%%", "%");
    return QProcess::execute("/bin/sh", {"-c", command});
}

class AutostartLaunchctlTest : public testing::Test {
protected:
    QString write(const QString& name, const QString& text) {
        return writeFile(folder.filePath(name), text.toUtf8());
    }
    QString writeAgent(const QString& name, const QString& program) {
        return write(name, QStringLiteral("<plist version=\"1.0\"><dict><key>Label</key>"
                                          "<string>org.example.Player</string><key>ProgramArguments</key>"
                                          "<array><string>%1</string><!-- a comment -->"
                                          "<string>--launched-at-login</string></array>"
                                          "<key>RunAtLoad</key><true/></dict></plist>")
                               .arg(program.toHtmlEscaped()));
    }
    QString bootstrap(const QString& file) { return launchctl.run({"bootstrap", "gui/1000", file}); }

    QTemporaryDir folder;
    QString autostart = folder.filePath("config/autostart");
    QString entry = autostart + "/org.example.Player.desktop";
    AutostartLaunchctl launchctl{autostart};
};

TEST_F(AutostartLaunchctlTest, TheEntryIsValidAndStartsTheProgramWhateverItsPath) {
    for (const char* name : {"plain", "with some spaces", "it's \"quoted\" & <odd>", "100% $HOME `id` \\n"}) {
        const QString output = folder.filePath("output");
        QFile::remove(output);
        const QString program =
            write(QString::fromUtf8(name), "#!/bin/sh\nprintf '%s|%s' \"$0\" \"$*\" > " + output);
        ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
        const QString agent = writeAgent(QString::fromUtf8(name) + ".plist", program);
        ASSERT_EQ(bootstrap(agent), QString());

        EXPECT_EQ(QProcess::execute("desktop-file-validate", {entry}), 0) << name;
        const QString exec = entryValue(QString::fromUtf8(readFile(entry)), "Exec");
        EXPECT_EQ(runExec(exec), 0) << name;
        EXPECT_EQ(readFile(output), program.toUtf8() + "|--launched-at-login") << name;

        QFile::remove(output);
        QFile::remove(agent);
        runExec(exec);
        EXPECT_FALSE(QFile::exists(output)) << "nothing starts once the agent's file is gone";
    }
}

TEST_F(AutostartLaunchctlTest, UnloadingKeepsTheNextLoginsStartAndForgettingEndsIt) {
    const QString agent = writeAgent("a.plist", "/bin/true");
    bootstrap(agent);
    const QString other = autostart + "/other.desktop";
    writeFile(other, "[Desktop Entry]\nType=Application\nName=Other\nExec=true\n");

    launchctl.run({"unload", agent});
    EXPECT_TRUE(QFile::exists(entry));
    launchctl.forget(agent);
    EXPECT_THAT(QDir(autostart).entryList(QDir::Files), ElementsAre("other.desktop"));
}

TEST_F(AutostartLaunchctlTest, AnAgentIsRegisteredWhileItsEntryStartsIt) {
    const QString agent = writeAgent("a.plist", "/usr/bin/player");
    EXPECT_FALSE(launchctl.isRegistered(agent));
    bootstrap(agent);
    EXPECT_TRUE(launchctl.isRegistered(agent));
    const QByteArray good = readFile(entry);
    const std::pair<const char*, QByteArray> respected[] = {
        {"switched off by the desktop", good + "X-GNOME-Autostart-enabled=false\nHidden=true\n"},
        {"with an action", good + "Actions=Quit;\n[Desktop Action Quit]\nExec=quit\n"},
    };
    for (const auto& [what, text] : respected) {
        writeFile(entry, text);
        EXPECT_TRUE(launchctl.isRegistered(agent)) << what;
    }
    const std::pair<const char*, QByteArray> broken[] = {
        {"empty", {}},
        {"cut off", good.left(good.size() / 2)},
        {"another executable", QByteArray(good).replace("/usr/bin/player", "/opt/player")},
        {"in another group", "[Desktop Action Quit]\n" + good.mid(good.indexOf('\n') + 1)},
    };
    for (const auto& [what, text] : broken) {
        writeFile(entry, text);
        EXPECT_FALSE(launchctl.isRegistered(agent)) << what;
        bootstrap(agent);
        EXPECT_EQ(readFile(entry), good) << what;
    }
    writeAgent("a.plist", "/opt/player");
    EXPECT_FALSE(launchctl.isRegistered(agent)) << "the entry starts what the agent was";
    QFile::remove(agent);
    EXPECT_FALSE(launchctl.isRegistered(agent));
}

TEST_F(AutostartLaunchctlTest, SaysWhatItCannotDoAndIgnoresWhatIsNoAgent) {
    EXPECT_NE(bootstrap(folder.filePath("missing")), QString());
    EXPECT_EQ(bootstrap(write("b", "<plist><dict>")), QString());
    EXPECT_THAT(QDir(autostart).entryList(QDir::Files), IsEmpty());
    AutostartLaunchctl nowhere("/proc/self/autostart");
    const QString agent = writeAgent("a.plist", "/bin/true");
    EXPECT_NE(nowhere.run({"bootstrap", "gui/0", agent}), QString());
}

} // namespace
} // namespace tarnwick::launchctl
