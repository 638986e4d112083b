#include "display/DisplayScene.h"

#include "display/SceneRenderer.h"
#include "tests/unit/display/DisplayFixture.h"

#include <QQmlEngine>

namespace tarnwick {
namespace {

class DisplaySceneTest : public DisplayFixture {
protected:
    QImage show(QSize size = {1200, 600}) {
        renderer = std::make_unique<SceneRenderer>(DisplayScene::create(engine, *view), size);
        view->appear();
        dispatcher.runUntilIdle();
        return renderer->render();
    }

    QQmlEngine engine;
    std::unique_ptr<SceneRenderer> renderer;
};

TEST_F(DisplaySceneTest, ShowsTheCoverOnTheLeftHalf) {
    answer(scripts::nowPlaying(), nowPlaying({{11, D::data(png(8))}}));
    const QImage picture = show();
    if (const auto path = qEnvironmentVariable("SAVE"); !path.isEmpty())
        picture.save(path);
    EXPECT_EQ(picture.pixelColor(300, 300), QColor(Qt::darkCyan));
    EXPECT_NE(picture.pixelColor(700, 300), QColor(Qt::darkCyan));
}

} // namespace
} // namespace tarnwick
