#include "platform/dispatch/VirtualDispatcher.h"
#include "platform/windows/KeyCodes.h"
#include "platform/windows/QtWindowSystem.h"
#include "platform/windows/X11Desktop.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <qpa/qplatformnativeinterface.h>

namespace tarnwick::windows {
namespace {

/// Screens of these sizes, side by side. The first one is there from the beginning and never goes.
void setScreens(const QList<QSize>& sizes) {
    QJsonArray screens;
    int right = 0;
    for (const QSize& size : sizes) {
        screens.append(QJsonObject{{"name", right == 0 ? QString() : QString::number(right)},
                                   {"x", right},
                                   {"width", size.width()},
                                   {"height", size.height()}});
        right += size.width();
    }
    QPlatformNativeInterface* platform = QGuiApplication::platformNativeInterface();
    using SetConfiguration = void (*)(const QJsonObject&, QPlatformNativeInterface*);
    reinterpret_cast<SetConfiguration>(platform->nativeResourceForIntegration("setConfiguration"))(
        {{"screens", screens}}, platform);
}

class QtWindowTest : public testing::Test {
protected:
    void show() {
        window.orderFront();
        QTest::qWait(0);
    }

    dispatch::VirtualDispatcher dispatcher;
    QtWindowSystem system{dispatcher};
    std::unique_ptr<QWindow> qWindow = std::make_unique<QWindow>();
    Window& window = system.add(*qWindow);
};

TEST_F(QtWindowTest, StandsInTheListUntilItIsDestroyed) {
    QWindow other;
    Window& second = system.add(other);
    EXPECT_EQ(system.windows(), (QList<Window*>{&window, &second}));
    EXPECT_EQ(system.mainWindow(), &window);
    qWindow.reset();
    EXPECT_EQ(system.windows(), (QList<Window*>{&second}));
}

TEST_F(QtWindowTest, ResizeIsPutRightWhenItHasSettled) {
    window.setContentAspectRatio(QSize(2, 1));
    window.setFrame(QRectF(50, 50, 400, 200));
    show();
    dispatcher.advance(QtWindowSystem::settlingTime);
    qWindow->resize(440, 200);
    QCoreApplication::processEvents();
    dispatcher.advance(QtWindowSystem::settlingTime / 2);
    EXPECT_EQ(qWindow->size(), QSize(440, 200)) << "the user may still be dragging";
    dispatcher.advance(QtWindowSystem::settlingTime / 2);
    EXPECT_EQ(qWindow->size(), QSize(440, 220));
}

TEST_F(QtWindowTest, FullScreenKeepsTheScreensProportion) {
    window.setContentAspectRatio(QSize(2, 1));
    show();
    window.toggleFullScreen();
    EXPECT_TRUE(window.isFullScreen());
    QCoreApplication::processEvents();
    dispatcher.advance(QtWindowSystem::settlingTime);
    EXPECT_EQ(qWindow->size(), qWindow->screen()->size());
    window.toggleFullScreen();
    EXPECT_FALSE(window.isFullScreen());
}

TEST_F(QtWindowTest, TheCloseButtonAsks) {
    QSignalSpy closes(&window, &Window::willClose);
    window.setShouldClose([this] {
        window.orderOut();
        return false;
    });
    show();
    EXPECT_FALSE(qWindow->close());
    EXPECT_EQ(closes.count(), 0);
    EXPECT_FALSE(window.isVisible());
    window.orderFront();
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_EQ(closes.count(), 1) << "who closes it from inside is not asked";
}

TEST_F(QtWindowTest, TellsWhetherItCanBeSeen) {
    QSignalSpy changes(&window, &Window::canBeSeenChanged);
    EXPECT_FALSE(window.canBeSeen());
    show();
    EXPECT_TRUE(window.canBeSeen());
    window.miniaturize();
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.canBeSeen());
    show();
    EXPECT_TRUE(window.canBeSeen());
    window.orderOut();
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.canBeSeen());
    EXPECT_EQ(changes.count(), 4);
}

TEST_F(QtWindowTest, FrameReadsBackAndNotifies) {
    QSignalSpy resizes(&window, &Window::didResize);
    show();
    window.setFrame(QRectF(30, 40, 300, 150));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.frame(), QRectF(30, 40, 300, 150));
    EXPECT_FALSE(resizes.isEmpty());
}

TEST_F(QtWindowTest, AScreenThatGoesTakesNoWindowWithIt) {
    const QRect left(0, 0, 1000, 800);
    qWindow->setFlag(Qt::FramelessWindowHint);
    for (const bool isFullScreen : {false, true}) {
        for (const bool isShown : {false, true}) {
            setScreens({left.size(), QSize(2000, 900)});
            qWindow->setScreen(QGuiApplication::screens().last());
            window.setFrame(QRectF(1700, 200, 600, 300));
            show();
            if (isFullScreen)
                window.toggleFullScreen();
            if (!isShown)
                window.orderOut();
            QCoreApplication::processEvents();
            setScreens({left.size()});
            QCoreApplication::processEvents();
            dispatcher.advance(QtWindowSystem::settlingTime);
            window.orderFront();
            EXPECT_EQ(window.isFullScreen(), isFullScreen);
            if (isFullScreen) {
                EXPECT_EQ(qWindow->geometry(), left) << isShown;
                window.toggleFullScreen();
            }
            QCoreApplication::processEvents();
            EXPECT_EQ(qWindow->geometry(), QRect(400, 300, 600, 300)) << isFullScreen << isShown;
        }
    }
}

TEST_F(QtWindowTest, TheFrameOfAnOrdinaryWindowOutlivesItsFillingTheScreen) {
    const QRectF ordinary(30, 40, 300, 150);
    show();
    window.setFrame(ordinary);
    QCoreApplication::processEvents();
    dispatcher.advance(QtWindowSystem::settlingTime);
    for (const Qt::WindowState filling : {Qt::WindowFullScreen, Qt::WindowMaximized}) {
        QSignalSpy resizes(&window, &Window::didResize);
        qWindow->setWindowStates(filling);
        QCoreApplication::processEvents();
        dispatcher.advance(QtWindowSystem::settlingTime);
        EXPECT_FALSE(window.isWindowed());
        EXPECT_NE(window.frame(), ordinary);
        EXPECT_EQ(window.windowedFrame(), ordinary);
        EXPECT_FALSE(resizes.isEmpty());
        qWindow->setWindowStates(Qt::WindowNoState);
        QCoreApplication::processEvents();
        EXPECT_TRUE(window.isWindowed());
    }
}

TEST_F(QtWindowTest, EveryWindowShowsTheIconThatTheApplicationHasNow) {
    QWindow other;
    system.add(other);
    show();
    for (const QColor& colour : {QColor(Qt::red), QColor(Qt::blue), QColor(Qt::red)}) {
        QImage icon(64, 64, QImage::Format_RGB32);
        icon.fill(colour);
        system.setApplicationIcon(icon);
        QCoreApplication::processEvents();
        for (const QWindow* each : {qWindow.get(), &other})
            EXPECT_EQ(each->icon().pixmap(64, 64).toImage().pixelColor(32, 32), colour);
    }
}

TEST(StartupId, TellsWhenTheUserActed) {
    EXPECT_EQ(timeOfStartupId("panel-7-host-menu-0_TIME123456"), 123456U);
    EXPECT_EQ(timeOfStartupId("x_TIME1_TIME4294967295"), 4294967295U);
    EXPECT_EQ(timeOfStartupId("x_TIME"), std::nullopt);
    EXPECT_EQ(timeOfStartupId("without"), std::nullopt);
}

TEST_F(QtWindowTest, FloatsAndSinksAgain) {
    window.setLevel(Level::Floating);
    EXPECT_TRUE(qWindow->flags().testFlag(Qt::WindowStaysOnTopHint));
    window.setLevel(Level::Normal);
    EXPECT_FALSE(qWindow->flags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST(KeyCodes, KnownKeysHaveTheirHardwareCode) {
    EXPECT_EQ(hardwareKeyCode(Qt::Key_Return), 36);
    EXPECT_EQ(hardwareKeyCode(Qt::Key_Escape), 53);
    EXPECT_EQ(hardwareKeyCode(Qt::Key_Down), 125);
    EXPECT_EQ(hardwareKeyCode(Qt::Key_Up), 126);
    EXPECT_EQ(hardwareKeyCode(Qt::Key_Q), std::nullopt);
}

} // namespace
} // namespace tarnwick::windows
