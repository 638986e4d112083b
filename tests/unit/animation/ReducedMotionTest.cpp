#include "platform/animation/ReducedMotion.h"

#include "tests/fakes/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

namespace tarnwick::animation {
namespace {

using Settings = QMap<QString, QVariantMap>;

/// The desktop's portal, which tells and announces settings.
class FakePortal : public QDBusVirtualObject {
public:
    FakePortal(const QString& address, Settings settings)
        : m_bus(QDBusConnection::connectToBus(address, "portal")), m_settings(std::move(settings)) {
        qDBusRegisterMetaType<Settings>();
        m_bus.registerVirtualObject(path, this);
        m_bus.registerService("org.freedesktop.portal.Desktop");
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus("portal"); }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        return message.member() == "ReadAll" &&
               connection.send(message.createReply(QVariant::fromValue(m_settings)));
    }

    void announce(const QString& space, const QString& key, const QVariant& value) {
        m_settings[space][key] = value;
        auto signal = QDBusMessage::createSignal(path, "org.freedesktop.portal.Settings", "SettingChanged");
        signal << space << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

private:
    const QString path = "/org/freedesktop/portal/desktop";
    QDBusConnection m_bus;
    Settings m_settings;
};

struct ReducedMotionTest : testing::Test {
    PrivateBus bus;
    QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), "motion");

    ~ReducedMotionTest() override { QDBusConnection::disconnectFromBus("motion"); }
};

TEST_F(ReducedMotionTest, EveryDesktopsWishHolds) {
    const struct {
        const char* space;
        const char* key;
        QVariant less, normal;
    } rows[] = {
        {"org.freedesktop.appearance", "reduced-motion", 1U, 0U},
        {"org.gnome.desktop.interface", "enable-animations", false, true},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", "0", "0.5"},
    };
    for (const auto& row : rows) {
        FakePortal portal(bus.address(), {{row.space, {{row.key, row.less}}}});
        const ReducedMotion motion(connection);
        EXPECT_FALSE(motion.isReduced()) << "nobody waits for the answer";
        EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); })) << row.space;
        portal.announce(row.space, row.key, row.normal);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !motion.isReduced(); })) << row.space;
        portal.announce("org.example", row.key, row.less);
        portal.announce(row.space, row.key, row.less);
        EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); })) << row.space;
    }
}

TEST_F(ReducedMotionTest, APortalThatComesLaterIsAsked) {
    const ReducedMotion motion(connection);
    const FakePortal portal(bus.address(), {{"org.gnome.desktop.interface", {{"enable-animations", false}}}});
    EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); }));
}

TEST_F(ReducedMotionTest, WithoutABusNothingIsReduced) {
    EXPECT_FALSE(ReducedMotion(QDBusConnection("none")).isReduced());
}

} // namespace
} // namespace tarnwick::animation
