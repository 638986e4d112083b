// The menus as a panel sees them: another client on a bus of its own.

#include "platform/menus/MenuExport.h"
#include "platform/menus/TrayIcon.h"
#include "tests/fakes/Pictures.h"
#include "tests/fakes/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

namespace tarnwick::menus {
namespace {

using testing::ElementsAre;

const auto menuInterface = QStringLiteral("com.canonical.dbusmenu");
const auto everything = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties |
                        QDBusConnection::ExportAllSignals;

/// A tray that takes note of who registers.
class Tray : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

public:
    QStringList items;
    bool hasHost = true;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& item) { items.append(item); }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();
};

class MenusOnARealBus : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(bus.address().isEmpty()); }
    ~MenusOnARealBus() override {
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        QDBusConnection::disconnectFromBus(QStringLiteral("panel"));
    }

    /// Calls as a panel would, while the program's own loop goes on.
    QVariantList call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(program.baseService(), path, interface, method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher watcher(panel.asyncCall(message));
        EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.isFinished(); })) << qPrintable(method);
        EXPECT_FALSE(watcher.isError()) << qPrintable(watcher.error().message());
        return watcher.reply().arguments();
    }

    LayoutItem layout(int parent, int depth) {
        const auto reply = call("/menu", menuInterface, "GetLayout", {parent, depth, QStringList()});
        return reply.size() == 2 ? qdbus_cast<LayoutItem>(reply.at(1)) : LayoutItem();
    }

    PrivateBus bus;
    QDBusConnection program = QDBusConnection::connectToBus(bus.address(), QStringLiteral("program"));
    QDBusConnection panel = QDBusConnection::connectToBus(bus.address(), QStringLiteral("panel"));
    MenuModel model;
};

QString labelOf(const LayoutItem& item) { return item.properties.value("label").toString(); }

TEST_F(MenusOnARealBus, APanelReadsTheMenusAndChooses) {
    int played = 0;
    model.setEntries(
        {Entry::menu("Playback", {Entry::command(
                                      "Play/Pause", [&] { ++played; }, QKeySequence("Ctrl+Shift+P")),
                                  Entry::separator()}),
         Entry::menu("Playlist", {})});
    const MenuExport exported(model, program, "/menu");

    const LayoutItem root = layout(0, -1);
    ASSERT_EQ(root.children.size(), 2);
    EXPECT_EQ(root.properties.value("children-display"), "submenu");
    EXPECT_EQ(labelOf(root.children[0]), "Playback");
    EXPECT_EQ(root.children[1].properties.value("enabled"), false) << "an empty menu";
    ASSERT_EQ(root.children[0].children.size(), 2);
    const LayoutItem& play = root.children[0].children[0];
    EXPECT_EQ(labelOf(play), "Play/Pause");
    EXPECT_EQ(qdbus_cast<QList<QStringList>>(play.properties.value("shortcut")),
              (QList<QStringList>{{"Control", "Shift", "P"}}));
    EXPECT_EQ(root.children[0].children[1].properties.value("type"), "separator");
    EXPECT_TRUE(layout(0, 1).children[0].children.isEmpty()) << "no deeper than asked for";

    call("/menu", menuInterface, "Event", {play.number, "clicked", QVariant::fromValue(QDBusVariant(0)), 0U});
    EXPECT_TRUE(QTest::qWaitFor([&] { return played == 1; }));
    call("/menu", menuInterface, "Event", {999, "clicked", QVariant::fromValue(QDBusVariant(0)), 0U});
    EXPECT_EQ(played, 1);
}

TEST_F(MenusOnARealBus, NamesAreTextWhateverTheyLookLike) {
    model.setEntries({Entry::command("under_score", {}), Entry::command("two\nlines", {}),
                      Entry::command(QString(1000, 'x'), {})});
    const MenuExport exported(model, program, "/menu");
    const LayoutItem root = layout(0, -1);
    ASSERT_EQ(root.children.size(), 3);
    EXPECT_EQ(labelOf(root.children[0]), "under__score") << "one alone marks a mnemonic";
    EXPECT_EQ(labelOf(root.children[1]), "two lines");
    EXPECT_LT(labelOf(root.children[2]).size(), 100);
}

TEST_F(MenusOnARealBus, EntriesCanBeBroughtUpToDateWhenTheMenuOpens) {
    model.setEntries({Entry::menu("Playlist", {})});
    const MenuExport exported(model, program, "/menu");
    QObject::connect(&model, &MenuModel::aboutToShow, &model, [this] {
        if (model.entries().first().entries.isEmpty())
            model.setEntries({Entry::menu("Playlist", {Entry::command("Musica", {})})});
    });
    EXPECT_EQ(call("/menu", menuInterface, "AboutToShow", {1}), QVariantList{true});
    EXPECT_EQ(labelOf(layout(1, -1).children.value(0)), "Musica");
    EXPECT_EQ(call("/menu", menuInterface, "AboutToShow", {1}), QVariantList{false});
}

TEST_F(MenusOnARealBus, ATrayThatComesLaterTakesTheIconIn) {
    TrayIcon icon(model, program, "Tarnwick", "org.tarnwick.Tarnwick");
    QSignalSpy activations(&icon, &TrayIcon::activated);
    Tray tray;
    ASSERT_TRUE(panel.registerObject("/StatusNotifierWatcher", &tray, everything));
    for (const int round : {1, 2}) { // the second time it has crashed in between
        ASSERT_TRUE(panel.registerService("org.kde.StatusNotifierWatcher"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return icon.isShown(); }));
        EXPECT_EQ(tray.items.size(), round);
        EXPECT_EQ(tray.items.last(), program.baseService());
        panel.unregisterService("org.kde.StatusNotifierWatcher");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !icon.isShown(); }));
    }
    call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", {0, 0});
    EXPECT_TRUE(QTest::qWaitFor([&] { return activations.count() == 1; }));

    QSignalSpy middle(&icon, &TrayIcon::secondaryActivated);
    QSignalSpy turns(&icon, &TrayIcon::turned);
    call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "SecondaryActivate", {0, 0});
    for (const auto& [delta, way] :
         {std::pair(120, "vertical"), std::pair(-1, "vertical"), std::pair(120, "horizontal")})
        call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Scroll", {delta, way});
    EXPECT_TRUE(QTest::qWaitFor([&] { return middle.count() == 1 && turns.count() == 2; }));
    EXPECT_EQ(activations.count(), 1);
    EXPECT_EQ(turns.value(0).value(0), 120);
    EXPECT_EQ(turns.value(1).value(0), -120) << "some trays count notches";
}

TEST_F(MenusOnARealBus, WithoutAHostNothingOfTheTrayIsSeen) {
    TrayIcon icon(model, program, "Tarnwick", "org.tarnwick.Tarnwick");
    Tray tray;
    tray.hasHost = false;
    ASSERT_TRUE(panel.registerObject("/StatusNotifierWatcher", &tray, everything));
    ASSERT_TRUE(panel.registerService("org.kde.StatusNotifierWatcher"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !tray.items.isEmpty(); }));
    call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll", {"org.kde.StatusNotifierItem"});
    EXPECT_FALSE(icon.isShown());
    tray.hasHost = true;
    Q_EMIT tray.StatusNotifierHostRegistered();
    EXPECT_TRUE(QTest::qWaitFor([&] { return icon.isShown(); }));
    tray.hasHost = false;
    Q_EMIT tray.StatusNotifierHostUnregistered();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !icon.isShown(); }));
}

TEST_F(MenusOnARealBus, TheIconIsTheThemesUntilThereIsACover) {
    TrayIcon icon(model, program, "Tarnwick", "org.tarnwick.Tarnwick");
    const auto read = [this](const char* property) {
        return call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                    {"org.kde.StatusNotifierItem", property})
            .value(0)
            .value<QDBusVariant>()
            .variant();
    };
    EXPECT_EQ(read("IconName"), "org.tarnwick.Tarnwick");
    icon.setIcon(plainPicture(QColor(1, 2, 3), {100, 100}, QImage::Format_RGB32));
    EXPECT_EQ(read("IconName"), "");
    const auto pictures = qdbus_cast<QList<IconPicture>>(read("IconPixmap"));
    ASSERT_FALSE(pictures.isEmpty());
    EXPECT_EQ(pictures.first().pixels.left(4), QByteArray("\xff\x01\x02\x03"));
}

} // namespace
} // namespace tarnwick::menus

#include "MenusOnARealBusTest.moc"
