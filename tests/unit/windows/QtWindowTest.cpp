#include "platform/dispatch/VirtualDispatcher.h"
#include "platform/windows/KeyCodes.h"
#include "platform/windows/QtWindowSystem.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

namespace tarnwick::windows {
namespace {

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

TEST_F(QtWindowTest, FrameReadsBackAndNotifies) {
    QSignalSpy resizes(&window, &Window::didResize);
    show();
    window.setFrame(QRectF(30, 40, 300, 150));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.frame(), QRectF(30, 40, 300, 150));
    EXPECT_FALSE(resizes.isEmpty());
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
