#include "app/window/RestingPointer.h"

#include "platform/dispatch/VirtualDispatcher.h"

#include <QGuiApplication>
#include <QTest>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tarnwick {
namespace {

class RestingPointerTest : public testing::Test {
protected:
    static bool isHidden() {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        return cursor && cursor->shape() == Qt::BlankCursor;
    }
    void move(QWindow& over, QPoint place) {
        QMouseEvent event(QEvent::MouseMove, place, over.mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(&over, &event);
    }

    QWindow window;
    QWindow other;
    dispatch::VirtualDispatcher dispatcher;
    RestingPointer pointer{dispatcher, window};
};

TEST_F(RestingPointerTest, HidesInFullScreenAndComesBackWithTheFirstMove) {
    window.show();
    move(window, {10, 10});
    dispatcher.advance(5s);
    EXPECT_FALSE(isHidden()) << "an ordinary window";
    window.showFullScreen();
    QCoreApplication::processEvents();
    move(window, {10, 10});
    dispatcher.advance(1900ms);
    EXPECT_FALSE(isHidden());
    dispatcher.advance(200ms);
    EXPECT_TRUE(isHidden());
    move(window, {10, 10});
    EXPECT_TRUE(isHidden()) << "what changed under it, and not its place";
    move(window, {11, 10});
    EXPECT_FALSE(isHidden());
    dispatcher.advance(1500ms);
    move(window, {12, 10});
    dispatcher.advance(1500ms);
    EXPECT_FALSE(isHidden());
    dispatcher.advance(600ms);
    EXPECT_TRUE(isHidden());
    move(other, {1, 1});
    EXPECT_FALSE(isHidden()) << "it is over the preferences now";
    dispatcher.advance(5s);
    EXPECT_FALSE(isHidden());
    move(window, {30, 10});
    dispatcher.advance(3s);
    EXPECT_TRUE(isHidden());
    window.showNormal();
    QCoreApplication::processEvents();
    EXPECT_FALSE(isHidden());
}

} // namespace
} // namespace tarnwick
