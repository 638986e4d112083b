#include "settings/Settings.h"

#include "platform/defaults/MemoryDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/FakeWindows.h"

#include <QFile>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tarnwick {
namespace {

/// Counts what is held; answers at once.
class FakePower : public power::PowerManager {
public:
    void preventUserIdleDisplaySleep(const QString&, CreatedHandler created) override {
        ++held;
        created(++m_last);
    }
    void release(Assertion) override { --held; }

    int held = 0;

private:
    Assertion m_last = 0;
};

class FakeLaunchctl : public launchctl::Launchctl {
public:
    QString run(const QStringList& arguments) override {
        calls.append(arguments.join(u' '));
        return error;
    }
    void forget(const QString& file) override { calls.append(QStringLiteral("forget ") + file); }

    QStringList calls;
    QString error;
};

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
    FakePower power;
    FakeLaunchctl launchctl;
    LaunchAgentManager agent{{folder.filePath(QStringLiteral("Library/LaunchAgents")),
                              QStringLiteral("org.example.Player"), QStringLiteral("/a b/<player>"),
                              launchctl, nullptr, [this](const QString& line) { log.append(line); }}};
    QImage applicationImage;
};

TEST_F(SettingsTest, NothingStoredGivesTheDefaultsOfTheTable) {
    const auto settings = make();
    EXPECT_EQ(preferences().size(), 30u);
    for (const auto& preference : preferences()) {
        const QVariant value = settings->property(preference.key.toLatin1().constData());
        const bool isOn =
            QStringList{QStringLiteral("enableCDAnimation"), QStringLiteral("showFileFormatLogo"),
                        QStringLiteral("enableFlip"), QStringLiteral("showTrackYear")}
                .contains(preference.key);
        if (value.metaType().id() == QMetaType::Bool) {
            EXPECT_EQ(value.toBool(), isOn) << qPrintable(preference.key);
        } else if (value.metaType().id() == QMetaType::QString) {
            EXPECT_EQ(value.toString(), preference.key == u"defaultCDImageChoice"
                                            ? QStringLiteral("cddefault")
                                            : QStringLiteral("System Font"));
        } else {
            EXPECT_EQ(value.toInt(), 0) << qPrintable(preference.key); // black, standard
        }
    }
    EXPECT_EQ(defaults.value(QStringLiteral("enableFlip")), std::nullopt) << "reading stores nothing";
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
            changed = QStringLiteral("Some Other");
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
    defaults.set(QStringLiteral("preventSleep"), QStringLiteral("true"));
    defaults.set(QStringLiteral("enableFlip"), 0.0);
    defaults.set(QStringLiteral("backgroundOption"), QStringLiteral("plaid"));
    defaults.set(QStringLiteral("tracklistStyle"), QStringLiteral("ipod"));
    defaults.set(QStringLiteral("selectedClockFont"), QStringList{QStringLiteral("A")});
    const auto settings = make();
    EXPECT_FALSE(settings->preventSleep());
    EXPECT_TRUE(settings->enableFlip());
    EXPECT_EQ(settings->backgroundOption(), BackgroundOption::Black);
    EXPECT_EQ(settings->tracklistStyle(), TracklistStyle::Standard);
    EXPECT_EQ(settings->selectedClockFont(), QStringLiteral("System Font"));
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

TEST_F(SettingsTest, TheRandomSwitchChoosesTheRandomBackgroundAndLeavesItThere) {
    const auto settings = make();
    settings->setRandomBackgroundEnabled(true);
    EXPECT_EQ(settings->backgroundOption(), BackgroundOption::Random);
    EXPECT_EQ(defaults.get<QString>(QStringLiteral("backgroundOption")), QStringLiteral("random"));
    settings->setRandomBackgroundEnabled(false);
    EXPECT_EQ(settings->backgroundOption(), BackgroundOption::Random);
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
    defaults.set(QStringLiteral("launchInFullscreen"), true);
    make();
    EXPECT_TRUE(window.isFullScreen());
    EXPECT_EQ(defaults.get<bool>(QStringLiteral("hasLaunchedBefore")), true);
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
    defaults.changeElsewhere(QStringLiteral("preventSleep"), true);
    EXPECT_TRUE(settings->preventSleep());
    EXPECT_EQ(published.count(), 1);
    EXPECT_EQ(power.held, 1);
    defaults.changeElsewhere(QStringLiteral("preventSleep"), QStringLiteral("nonsense"));
    EXPECT_FALSE(settings->preventSleep()) << "the default";
    EXPECT_EQ(power.held, 0);
    defaults.changeElsewhere(QStringLiteral("unknown"), true);
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
    EXPECT_THAT(launchctl.calls,
                ElementsAre(QStringLiteral("bootstrap gui/%1 ").arg(::getuid()) + file,
                            QStringLiteral("unload ") + file, QStringLiteral("unload ") + file,
                            QStringLiteral("forget ") + file));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SettingsTest, TheAgentsFailuresArePrintedAndLeaveTheFileAsItIs) {
    launchctl.error = QStringLiteral("no such command");
    agent.installLaunchAgent();
    EXPECT_TRUE(agent.isInstalled()) << "written, not registered";
    agent.deactivateLaunchAgent();
    agent.removeLaunchAgent();
    EXPECT_TRUE(agent.isInstalled());
    LaunchAgentManager nowhere({QStringLiteral("/proc/self/agents"), QStringLiteral("id"), QString(),
                                launchctl, nullptr, [this](const QString& line) { log.append(line); }});
    nowhere.installLaunchAgent();
    ASSERT_EQ(log.size(), 4);
    EXPECT_EQ(log[0], QStringLiteral("❌ Errore nell'installazione del Launch Agent: no such command"));
    EXPECT_EQ(log[1], QStringLiteral("❌ Errore nella disattivazione del Launch Agent: no such command"));
    EXPECT_EQ(log[2], QStringLiteral("❌ Errore nella rimozione del Launch Agent: no such command"));
    EXPECT_TRUE(log[3].startsWith(QStringLiteral("❌ Errore nell'installazione del Launch Agent: ")));
}

TEST_F(SettingsTest, TheAgentsDocumentIsFixed) {
    EXPECT_EQ(agent.document().toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
    <dict>
        <key>Label</key>
        <string>org.example.Player</string>
        <key>ProgramArguments</key>
        <array>
            <string>/a b/&lt;player&gt;</string>
            <string>--launched-at-login</string> <!-- 🔹 Aggiunto flag per riconoscere l'avvio automatico -->
        </array>
        <key>RunAtLoad</key>
        <true/>
        <key>LimitLoadToSessionType</key>
        <string>Aqua</string> <!-- Impedisce il caricamento nei processi di sistema -->
    </dict>
</plist>
)");
}

TEST_F(SettingsTest, ParsesOnlyWhatIsPossible) {
    const auto* flip = findPreference(QStringLiteral("enableFlip"));
    EXPECT_EQ(flip->parse(QStringLiteral("false")), defaults::Value(false));
    EXPECT_EQ(flip->parse(QStringLiteral("False")), std::nullopt);
    EXPECT_EQ(flip->possibleValues(), QStringLiteral("\"true\" or \"false\""));
    const auto* style = findPreference(QStringLiteral("tracklistStyle"));
    EXPECT_EQ(style->parse(QStringLiteral("iPod")), defaults::Value(QStringLiteral("iPod")));
    EXPECT_EQ(style->parse(QStringLiteral("ipod")), std::nullopt);
    EXPECT_EQ(findPreference(QStringLiteral("selectedClockFont"))->parse(QString()),
              defaults::Value(QString()));
    EXPECT_EQ(findPreference(QStringLiteral("hasLaunchedBefore")), nullptr);
}

} // namespace
} // namespace tarnwick
