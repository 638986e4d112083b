#include "canvas/RenderQueue.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "visuals/RotatingCDLayerView.h"

#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

#include <numbers>
#include <utility>

namespace tarnwick {

using namespace std::chrono_literals;

namespace {

DiscImage disc(const char* name) { return DiscImage::named(Catalogue::shared(), QLatin1String(name)); }

class RotatingCDViewTest : public testing::Test {
protected:
    RotatingCDViewTest() {
        window.resize(300, 200);
        view.setParentItem(window.contentItem());
        view.setClock(&clock);
        view.setNsImage(disc("33Vinyl"));
        view.setSide(200);
        QObject::connect(&view, &RotatingCDLayerView::logLine, [this](const QString& line) { log += line; });
    }

    /// How many frames are drawn in a span of real time, which is what must not happen.
    int framesIn(std::chrono::milliseconds span) {
        QCoreApplication::processEvents();
        frames = 0;
        QTest::qWait(static_cast<int>(span.count()));
        return frames;
    }

    CDLayer& layer() { return *view.view()->cdLayer(); }

    animation::ManualClock clock;
    QQuickWindow window;
    RotatingCDLayerView view;
    QString log;
    int frames = 0;
};

} // namespace

TEST_F(RotatingCDViewTest, TurnsWhilePlayingAndStopsWhereItIs) {
    view.setIsPlaying(true);
    EXPECT_FALSE(view.view()->isRotating());
    view.setRotateCDDuringPlayback(true);
    EXPECT_TRUE(view.view()->isRotating());
    clock.advance(325ms);
    EXPECT_NEAR(layer().rotation(), 90, 1e-6);
    clock.advance(1300ms * 1'000'000);
    EXPECT_NEAR(layer().rotation(), 90, 1e-6) << "a million turns later";
    view.setIsPlaying(false);
    clock.advance(10s);
    view.setRotateCDDuringPlayback(false); // stops it once more
    clock.advance(10s);
    view.setRotateCDDuringPlayback(true);
    EXPECT_NEAR(view.view()->angle(), -std::numbers::pi / 2, 1e-9);
    EXPECT_NEAR(layer().rotation(), 90, 1e-6);
    view.setIsPlaying(true);
    view.setNsImage(disc("45Vinyl")); // an update restarts the turn, and it must not jump
    clock.advance(325ms);
    EXPECT_NEAR(layer().rotation(), 180, 1e-6);
}

TEST_F(RotatingCDViewTest, FillsTheSmallerSideOfItsView) {
    view.setSize({300, 120});
    EXPECT_EQ(layer().size(), QSizeF(120, 120));
    EXPECT_EQ(layer().position(), QPointF(90, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return layer().picture()->size() == QSize(120, 120); }));
}

TEST_F(RotatingCDViewTest, ABrokenPictureGivesTheDefaultDisc) {
    view.setNsImage(DiscImage::of(images::Image::fromPixels(QImage(0, 0, QImage::Format_RGBA8888))));
    EXPECT_EQ(log, QLatin1String("Errore: Immagine non valida. Usando immagine predefinita."));
    EXPECT_EQ(layer().picture(), Catalogue::shared().picture(QStringLiteral("cddefault"), {200, 200}));
}

TEST_F(RotatingCDViewTest, DrawsElsewhereAndOnlyTheLastOfMany) {
    dispatch::VirtualDispatcher dispatcher;
    renderqueue::setDispatcher(&dispatcher);
    const auto before = layer().picture();
    for (const char* name : {"45Vinyl", "cddefault", "33Vinyl", "45Vinyl"})
        view.setNsImage(disc(name));
    EXPECT_EQ(renderqueue::pending(), 1);
    EXPECT_EQ(layer().picture(), before);
    dispatcher.runUntilIdle();
    renderqueue::setDispatcher(nullptr);
    EXPECT_EQ(renderqueue::pending(), 0);
    EXPECT_EQ(*layer().picture(), *disc("45Vinyl").render(200));
}

TEST_F(RotatingCDViewTest, IsStretchedWhileItsSizeChangesAndThenDrawnOnce) {
    ASSERT_EQ(layer().picture()->width(), 200) << "the first one is there at once";
    dispatch::VirtualDispatcher dispatcher;
    renderqueue::setDispatcher(&dispatcher);
    int drawings = 0;
    auto shown = layer().picture();
    const auto pass = [&](std::chrono::milliseconds time) {
        dispatcher.advance(time);
        drawings += std::exchange(shown, layer().picture()) != layer().picture();
    };
    for (int side = 210; side <= 300; side += 10) {
        view.setSide(side);
        pass(100ms);
        EXPECT_EQ(layer().width(), side);
    }
    EXPECT_EQ(drawings, 0);
    pass(100ms);
    pass(10s);
    EXPECT_EQ(drawings, 1);
    EXPECT_EQ(shown->width(), 300);

    view.setSide(250);
    view.setNsImage(disc("45Vinyl"));
    pass(0ms);
    EXPECT_EQ(drawings, 2) << "another picture does not wait";
    EXPECT_EQ(shown->width(), 250);
    pass(10s);
    EXPECT_EQ(drawings, 2);
    renderqueue::setDispatcher(nullptr);
}

TEST_F(RotatingCDViewTest, DrawsFramesOnlyWhileItTurns) {
    view.setClock(nullptr);
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; });
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return frames > 0; }));
    view.setRotateCDDuringPlayback(true);
    view.setIsPlaying(true);
    const auto* picture = layer().picture().get();
    frames = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] { return frames > 5; }));
    EXPECT_EQ(layer().picture().get(), picture);

    view.setIsPlaying(false);
    EXPECT_LE(framesIn(300ms), 1); // the last angle

    view.setIsPlaying(true);
    view.setVisible(false);
    EXPECT_LE(framesIn(300ms), 1);
}

TEST(RotatingCDView, TurnsInAWindowThatIsShownLater) {
    QQuickWindow window;
    window.resize(200, 200);
    auto* view = new RotatingCDLayerView(window.contentItem());
    view->setNsImage(disc("33Vinyl"));
    view->setSide(200);
    view->setRotateCDDuringPlayback(true);
    view->setIsPlaying(true);
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; });
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return frames > 5; }));
}

} // namespace tarnwick
