#include "app/window/MainWindow.h"

#include "platform/defaults/MemoryDefaults.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/FakeWindows.h"

#include <gmock/gmock.h>

namespace tarnwick {
namespace {

class MainWindowTest : public testing::Test {
protected:
    void store(double x, double y, double width, double height) {
        defaults.set("WindowOriginX", x);
        defaults.set("WindowOriginY", y);
        defaults.set("WindowWidth", width);
        defaults.set("WindowHeight", height);
    }

    dispatch::VirtualDispatcher dispatcher;
    defaults::MemoryDefaults defaults;
    windows::FakeWindows windows;
    Settings settings{{dispatcher, defaults, windows}};
    bool canComeBack = true;
    MainWindow mainWindow{{windows, defaults, settings, [this] { return canComeBack; }}};
};

TEST_F(MainWindowTest, WithoutAWindowThereIsNothingToSetUp) { mainWindow.setUp(); }

TEST_F(MainWindowTest, SetUpGivesTheWindowItsBehaviour) {
    windows::FakeWindow& window = windows.addWindow();
    windows::FakeWindow& other = windows.addWindow();
    mainWindow.setUp();
    EXPECT_TRUE(window.isTitleBarHidden());
    EXPECT_EQ(window.contentAspectRatio(), QSize(2, 1));
    EXPECT_EQ(window.timesOrderedFront(), 1);
    EXPECT_FALSE(window.isClosed());
    EXPECT_TRUE(other.isClosed());
}

TEST_F(MainWindowTest, FrameIsRestoredOnlyWhenNoneOfItsNumbersIsZero) {
    windows::FakeWindow& window = windows.addWindow();
    const QRectF systems(7, 8, 900, 450);
    struct {
        double x, y, width, height;
        bool restored;
    } const rows[] = {{100, 200, 1200, 600, true}, {-5, 200, 1200, 600, true}, {0, 200, 1200, 600, false},
                      {100, 0, 1200, 600, false},  {100, 200, 0, 600, false},  {100, 200, 1200, 0, false}};
    for (const auto& row : rows) {
        window.setFrame(systems);
        store(row.x, row.y, row.width, row.height);
        MainWindow({windows, defaults, settings, [] { return true; }}).setUp();
        EXPECT_EQ(window.frame(), row.restored ? QRectF(row.x, row.y, row.width, row.height) : systems);
    }
}

TEST_F(MainWindowTest, FrameIsRestoredOnce) {
    windows::FakeWindow& window = windows.addWindow();
    store(100, 200, 1200, 600);
    window.orderOut();
    mainWindow.restoreFrame();
    EXPECT_EQ(window.frame(), QRectF(100, 200, 1200, 600));
    window.orderFront(); // with the splash
    const QRectF moved(300, 250, 1200, 600);
    window.setFrame(moved);
    mainWindow.setUp();
    EXPECT_EQ(window.frame(), moved);
    EXPECT_EQ(mainWindow.storedFrame(), moved) << "it is the user's place";
}

TEST_F(MainWindowTest, AnOriginOfZeroIsStoredAsAPlaceUnlessTheScreenIsFilled) {
    windows::FakeWindow& window = windows.addWindow();
    mainWindow.setUp();
    window.setFrame(QRectF(0, 0, 800, 400));
    EXPECT_EQ(mainWindow.storedFrame(), QRectF(0.001, 0.001, 800, 400));
    window.setFrame(QRectF(0, 70, 800, 400));
    EXPECT_EQ(mainWindow.storedFrame(), QRectF(0.001, 70, 800, 400));
    for (const bool maximized : {true, false}) {
        window.setMaximized(maximized);
        if (!maximized)
            window.toggleFullScreen();
        window.setFrame(QRectF(0, 0, 1920, 1080));
        EXPECT_EQ(mainWindow.storedFrame(), std::nullopt);
    }
}

TEST_F(MainWindowTest, TheEndStoresTheOrdinaryFrame) {
    windows::FakeWindow& window = windows.addWindow();
    mainWindow.setUp();
    mainWindow.leave();
    EXPECT_EQ(mainWindow.storedFrame(), std::nullopt) << "nothing was moved";
    const QRectF ordinary(50, 60, 800, 400);
    window.setFrame(ordinary);
    window.toggleFullScreen();
    window.setFrame(QRectF(0, 0, 1920, 1080));
    mainWindow.leave();
    EXPECT_EQ(mainWindow.storedFrame(), ordinary);
}

TEST_F(MainWindowTest, FrameIsStoredAfterEveryMoveInFullScreenToo) {
    windows::FakeWindow& window = windows.addWindow();
    window.setFrame(QRectF(1, 2, 3, 4));
    EXPECT_FALSE(mainWindow.storedFrame()) << "before the set-up nothing is stored";
    mainWindow.setUp();
    window.setFrame(QRectF(50, 60, 800, 400));
    EXPECT_EQ(mainWindow.storedFrame(), QRectF(50, 60, 800, 400));
    window.toggleFullScreen();
    window.setFrame(QRectF(10, 10, 1920, 1080));
    EXPECT_EQ(mainWindow.storedFrame(), QRectF(10, 10, 1920, 1080));
}

TEST_F(MainWindowTest, FullScreenWhenPreferredAndNotThereYet) {
    settings.setLaunchInFullscreen(true);
    windows::FakeWindow& window = windows.addWindow();
    mainWindow.setUp();
    EXPECT_TRUE(window.isFullScreen());
    window.setFrame(QRectF());
    MainWindow({windows, defaults, settings, [] { return true; }}).setUp();
    EXPECT_TRUE(window.isFullScreen()) << "not toggled out of it again";
}

TEST_F(MainWindowTest, InFullScreenTheProportionIsTheScreens) {
    windows::FakeWindow& window = windows.addWindow();
    window.toggleFullScreen();
    mainWindow.setUp();
    EXPECT_TRUE(window.contentAspectRatio().isEmpty());
}

TEST_F(MainWindowTest, TheCloseButtonHidesAndNothingIsLost) {
    windows::FakeWindow& window = windows.addWindow();
    mainWindow.setUp();
    window.pressClose();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.isClosed());
    mainWindow.show();
    EXPECT_TRUE(window.isVisible());

    canComeBack = false; // no tray, no bus
    window.pressClose();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.isMiniaturized());
}

} // namespace
} // namespace tarnwick
