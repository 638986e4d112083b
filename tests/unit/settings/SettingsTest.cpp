#include "settings/Settings.h"

#include "platform/defaults/MemoryDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/CountingPower.h"
#include "tests/fakes/FakeLaunchctl.h"
#include "tests/fakes/FakeWindows.h"
#include "tests/fakes/Files.h"

#include <QCryptographicHash>
#include <QFile>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

class SettingsTest : public testing::Test {
protected:
    std::unique_ptr<Settings> make() {
        auto settings = std::make_unique<Settings>(Settings::Parts{
            dispatcher, defaults, windows, &power, &agent, [this] { return applicationImage; }});
        dispatcher.runUntilIdle();
        return settings;
    }

    QTemporaryDir folder;
    QStringList log;
    dispatch::VirtualDispatcher dispatcher;
    defaults::MemoryDefaults defaults;
    windows::FakeWindows windows;
    CountingPower power;
    FakeLaunchctl launchctl;
    LaunchAgentManager agent{{folder.filePath("Library/LaunchAgents"), "org.example.Player", "/a b/<player>",
                              launchctl, nullptr, [this](const QString& line) { log.append(line); }}};
    QImage applicationImage;
};

TEST_F(SettingsTest, NothingStoredGivesTheDefaultsOfTheTable) {
    const auto settings = make();
    EXPECT_EQ(preferences().size(), 30u);
    for (const auto& preference : preferences()) {
        const QVariant value = settings->property(preference.key.toLatin1().constData());
        const bool isOn =
            QStringList{"enableCDAnimation", "showFileFormatLogo", "enableFlip", "showTrackYear"}.contains(
                preference.key);
        if (value.metaType().id() == QMetaType::Bool) {
            EXPECT_EQ(value.toBool(), isOn) << qPrintable(preference.key);
        } else if (value.metaType().id() == QMetaType::QString) {
            EXPECT_EQ(value.toString(),
                      preference.key == u"defaultCDImageChoice" ? "cddefault" : "System Font");
        } else {
            EXPECT_EQ(value.toInt(), 0) << qPrintable(preference.key); // black, standard
        }
    }
    EXPECT_EQ(defaults.value("enableFlip"), std::nullopt) << "reading stores nothing";
}

TEST_F(SettingsTest, EachFieldIsPublishedStoredUnderItsNameAndReadBack) {
    windows.addWindow();
    for (const auto& preference : preferences()) {
        const QByteArray name = preference.key.toLatin1();
        auto settings = make();
        const auto property =
            settings->metaObject()->property(settings->metaObject()->indexOfProperty(name.constData()));
        QSignalSpy published(settings.get(), property.notifySignal());
        QVariant changed;
        defaults::Value stored;
        if (property.metaType().id() == QMetaType::Bool) {
            changed = !property.read(settings.get()).toBool();
            stored = changed.toBool();
        } else if (property.metaType().id() == QMetaType::QString) {
            changed = "Some Other";
            stored = changed.toString();
        } else {
            changed = 2;
            stored = preference.choices.at(2);
        }
        ASSERT_TRUE(property.write(settings.get(), changed)) << name.constData();
        ASSERT_TRUE(property.write(settings.get(), changed));
        EXPECT_EQ(published.count(), 1) << name.constData();
        EXPECT_EQ(defaults.value(preference.key), stored) << name.constData();
        settings = make();
        const QVariant readBack = property.read(settings.get());
        if (property.isEnumType())
            EXPECT_EQ(readBack.toInt(), changed.toInt()) << name.constData();
        else
            EXPECT_EQ(readBack, changed) << name.constData();
    }
}

TEST_F(SettingsTest, WhatDoesNotFitIsTheDefault) {
    defaults.set("preventSleep", "true");
    defaults.set("enableFlip", 0.0);
    defaults.set("backgroundOption", "plaid");
    defaults.set("tracklistStyle", "ipod");
    defaults.set("selectedClockFont", QStringList{"A"});
    const auto settings = make();
    EXPECT_FALSE(settings->preventSleep());
    EXPECT_TRUE(settings->enableFlip());
    EXPECT_EQ(settings->backgroundOption(), BackgroundOption::Black);
    EXPECT_EQ(settings->tracklistStyle(), TracklistStyle::Standard);
    EXPECT_EQ(settings->selectedClockFont(), "System Font");
    for (const auto& preference : preferences())
        EXPECT_EQ(preference.value(defaults), preference.defaultValue) << qPrintable(preference.key);
}

TEST_F(SettingsTest, KeepsTheDisplayAwakeAsToldAndFromTheStart) {
    auto settings = make();
    EXPECT_EQ(power.held, 0);
    settings->setPreventSleep(true);
    EXPECT_EQ(power.held, 1);
    settings->setPreventSleep(false);
    EXPECT_EQ(power.held, 0);
    settings->setPreventSleep(true);
    settings.reset();
    settings = make();
    EXPECT_EQ(power.held, 1);
}

TEST_F(SettingsTest, TheLevelGoesToTheFirstWindowAtTheStartAndAtEachChange) {
    auto settings = make(); // with no window nothing happens
    settings->setIsAlwaysOnTop(true);
    dispatcher.runUntilIdle();
    auto& first = windows.addWindow();
    auto& second = windows.addWindow();
    settings = make();
    EXPECT_EQ(first.level(), windows::Level::Floating);
    settings->setIsAlwaysOnTop(false);
    dispatcher.runUntilIdle();
    EXPECT_EQ(first.level(), windows::Level::Normal);
    EXPECT_EQ(second.level(), windows::Level::Normal);
}

TEST_F(SettingsTest, OnlyTheFirstRunAsksForFullScreen) {
    auto& window = windows.addWindow();
    defaults.set("launchInFullscreen", true);
    make();
    EXPECT_TRUE(window.isFullScreen());
    EXPECT_EQ(defaults.get<bool>("hasLaunchedBefore"), true);
    make();
    EXPECT_TRUE(window.isFullScreen()) << "toggled once";
}

TEST_F(SettingsTest, TheIconIsPutBackOrToBeBuiltAnew) {
    const auto settings = make();
    QSignalSpy updates(&windows, &windows::WindowSystem::updateAppIcon);
    settings->setAutoUpdateAppIcon(true);
    EXPECT_EQ(updates.count(), 1);
    settings->setAutoUpdateAppIcon(false);
    EXPECT_TRUE(windows.icon().isNull()) << "no picture of that name, no change";
    applicationImage = QImage(4, 4, QImage::Format_RGBA8888);
    settings->setAutoUpdateAppIcon(true);
    settings->setAutoUpdateAppIcon(false);
    EXPECT_EQ(windows.icon().size(), QSize(4, 4));
}

TEST_F(SettingsTest, FollowsAnotherProcessSideEffectsIncluded) {
    const auto settings = make();
    QSignalSpy published(settings.get(), &Settings::preventSleepChanged);
    defaults.changeElsewhere("preventSleep", true);
    EXPECT_TRUE(settings->preventSleep());
    EXPECT_EQ(published.count(), 1);
    EXPECT_EQ(power.held, 1);
    defaults.changeElsewhere("preventSleep", "nonsense");
    EXPECT_FALSE(settings->preventSleep()) << "the default";
    EXPECT_EQ(power.held, 0);
    defaults.changeElsewhere("unknown", true);
}

TEST_F(SettingsTest, StartingAtLoginInstallsAndRemovesTheAgentOncePerChange) {
    const auto settings = make();
    const QString file = agent.agentFile();
    settings->setLaunchAtLogin(true);
    EXPECT_TRUE(QFile::exists(file));
    agent.installLaunchAgent();
    agent.deactivateLaunchAgent();
    EXPECT_TRUE(QFile::exists(file));
    settings->setLaunchAtLogin(false);
    EXPECT_FALSE(QFile::exists(file));
    agent.removeLaunchAgent();
    agent.deactivateLaunchAgent();
    EXPECT_THAT(launchctl.calls, ElementsAre(QStringLiteral("bootstrap gui/%1 ").arg(::getuid()) + file,
                                             "unload " + file, "unload " + file, "forget " + file));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SettingsTest, AnAgentThatIsNotWhatItShouldBeIsRepaired) {
    const auto bootstraps = [this] { return launchctl.commands.count("bootstrap"); };
    launchctl.error = "not today";
    agent.installLaunchAgent();
    launchctl.error.clear();
    launchctl.registered = false;
    agent.installLaunchAgent();
    EXPECT_EQ(bootstraps(), 2) << "the first failed";
    launchctl.registered = true;
    for (const QByteArray& bytes : {QByteArray(), agent.document().replace("/a b/", "/c/")}) {
        writeFile(agent.agentFile(), bytes);
        launchctl.commands.clear();
        agent.installLaunchAgent();
        agent.installLaunchAgent();
        EXPECT_EQ(readFile(agent.agentFile()), agent.document());
        EXPECT_EQ(bootstraps(), 1) << bytes.constData();
    }
}

TEST_F(SettingsTest, TheAgentsFailuresArePrintedAndLeaveTheFileAsItIs) {
    launchctl.error = "no such command";
    agent.installLaunchAgent();
    EXPECT_TRUE(agent.isInstalled()) << "written, not registered";
    agent.deactivateLaunchAgent();
    agent.removeLaunchAgent();
    EXPECT_TRUE(agent.isInstalled());
    LaunchAgentManager nowhere({"/proc/self/agents", "id", QString(), launchctl, nullptr,
                                [this](const QString& line) { log.append(line); }});
    nowhere.installLaunchAgent();
    ASSERT_EQ(log.size(), 4);
    EXPECT_EQ(log[0], "❌ Errore nell'installazione del Launch Agent: no such command");
    EXPECT_EQ(log[1], "❌ Errore nella disattivazione del Launch Agent: no such command");
    EXPECT_EQ(log[2], "❌ Errore nella rimozione del Launch Agent: no such command");
    EXPECT_TRUE(log[3].startsWith("❌ Errore nell'installazione del Launch Agent: "));
}

TEST_F(SettingsTest, TheAgentsDocumentIsWrittenToTheLetter) {
    const QByteArray bytes = agent.document();
    EXPECT_THAT(bytes.toStdString(), testing::HasSubstr("<string>/a b/&lt;player&gt;</string>"));
    EXPECT_EQ(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().left(16),
              "a906939239facbc2");
}

TEST_F(SettingsTest, ParsesOnlyWhatIsPossible) {
    const auto* flip = findPreference("enableFlip");
    EXPECT_EQ(flip->parse("false"), defaults::Value(false));
    EXPECT_EQ(flip->parse("False"), std::nullopt);
    EXPECT_EQ(flip->possibleValues(), "\"true\" or \"false\"");
    const auto* style = findPreference("tracklistStyle");
    EXPECT_EQ(style->parse("iPod"), defaults::Value("iPod"));
    EXPECT_EQ(style->parse("ipod"), std::nullopt);
    EXPECT_EQ(findPreference("selectedClockFont")->parse(QString()), defaults::Value(QString()));
    EXPECT_EQ(findPreference("hasLaunchedBefore"), nullptr);
}

} // namespace
} // namespace tarnwick
